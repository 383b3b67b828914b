#include "busy_cursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace vantrel {
namespace {

// Kept while one call runs; a nested call (a server that calls back) keeps
// its own, and the cursor comes back when the outer one ends.
class BusyCursor {
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace

std::unique_ptr<AutomationObject> BusyWhileCalling(const ServerFactory& create) {
    return GuardedWhileCalling<BusyCursor>(create);
}

}  // namespace vantrel
