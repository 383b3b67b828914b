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

class BusyObject final : public AutomationObject {
public:
    explicit BusyObject(std::unique_ptr<AutomationObject> inner)
        : inner_(std::move(inner)) {}

    void Put(std::string_view member, const Variant& value) override {
        const BusyCursor busy;
        inner_->Put(member, value);
    }
    Variant Call(std::string_view member) override {
        const BusyCursor busy;
        return inner_->Call(member);
    }
    Variant Call(std::string_view member, const Variant& argument) override {
        const BusyCursor busy;
        return inner_->Call(member, argument);
    }
    Variant CallByRef(std::string_view member, Variant& argument) override {
        const BusyCursor busy;
        return inner_->CallByRef(member, argument);
    }

private:
    std::unique_ptr<AutomationObject> inner_;
};

}  // namespace

std::unique_ptr<AutomationObject> BusyWhileCalling(const ServerFactory& create) {
    std::unique_ptr<AutomationObject> object;
    {
        const BusyCursor busy;
        object = create();
    }
    if (!object) {
        return object;  // the registry reports the failed creation
    }
    return std::make_unique<BusyObject>(std::move(object));
}

}  // namespace vantrel
