#pragma once

#include "server/runtime_error.h"
#include "server/variant.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel::simulation {

// A release of the server other than the one the simulator models, so that
// a comparison of two releases can be tried and shown on one machine. Each
// change touches one member only, and always the same way:
//   renamed-key   FuelingPositionInformation answers "Price=" for "UnitPrice="
//   added-line    DispenserInformation answers one more line, "Firmware=4.03"
//   raised-error  CardQue raises run-time error 57, "Device I/O error"
//   version       SystemVersions names the application 10.30 for 10.29
//   slower        ReaderInformation answers 60 ms later
class ReleaseChanges {
public:
    // "renamed-key,version": the changes by name, any number, comma-separated.
    // Nothing, and the unknown name in `unknown`, when a name is not one.
    static std::optional<ReleaseChanges> Parse(std::string_view list, std::string& unknown);
    static constexpr std::string_view kNames = "renamed-key, added-line, raised-error, version, slower";

    bool any() const { return bits_ != 0; }
    // How long a call of the member is held back.
    std::chrono::milliseconds DelayOf(std::string_view member) const;
    // Throws the error the member raises in this release.
    void RaiseFor(std::string_view member) const;
    // The member's answer as this release gives it.
    void ChangeAnswer(std::string_view member, Variant& answer) const;

private:
    enum Bit : unsigned {
        RenamedKey = 1,
        AddedLine = 2,
        RaisedError = 4,
        Version = 8,
        Slower = 16,
    };
    bool has(Bit bit) const { return (bits_ & bit) != 0; }
    unsigned bits_ = 0;
};

}  // namespace vantrel::simulation
