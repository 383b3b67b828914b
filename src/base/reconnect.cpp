#include "reconnect.h"

#include "base/console.h"
#include "base/process_error_report.h"
#include "server/server_link.h"

namespace vantrel {

void ReconnectToServer(Console& console, ServerLink& link, ProcessErrorReport& report) {
    if (!report.keepGoing()) {
        console.MsgBox(
            u"Reconnecting needs Tools > Keep going after run-time errors: without it, the first call "
            u"that fails ends the console.");
        return;
    }
    try {
        link.Reconnect();
    } catch (const RuntimeError& error) {
        report.Report(error);
    }
}

}  // namespace vantrel
