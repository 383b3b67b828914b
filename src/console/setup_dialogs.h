#pragma once

#include "base/form.h"

#include <vector>

namespace vantrel {

// The set-up dialogs: GetDebugSelect chooses a debug mode, SerialPortPara
// chooses the server's serial port and baud rate and sends them. Both report
// through the console's DialogSelection.
FormDescription GetDebugSelectForm();
FormDescription SerialPortParaForm();

// What the console's "Set-up" menu offers: one entry per dialog. The console
// window renders the entries; each runs as one user-interface event.
struct MenuEntry {
    std::string name;  // object name of the entry
    Text caption;      // with the toolkit's "&" before the access key
    Handler action;
};
std::vector<MenuEntry> SetupMenu();

}  // namespace vantrel
