#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace vantrel {

// The one error type of the console: a run-time error with the number and the
// description a technician knows from the platform's error report.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, std::string description);

    int number() const { return number_; }
    const std::string& description() const { return description_; }

private:
    int number_;
    std::string description_;
};

// The platform's text for a run-time error number, as its error report shows
// it; "Application-defined or object-defined error" for a number it has no
// text of its own for.
std::string_view RunTimeErrorText(int number);
// The number as the platform's report shows it: a number of its own plain
// ("438"), one that is a failing HRESULT with its code in hexadecimal beside
// it ("-2147023174 (800706ba)"), so that it can be looked up.
std::string ErrorNumberText(int number);
// The error with the platform's text for its number.
RuntimeError RunTimeErrorOf(int number);

// The platform errors the console can raise itself.
namespace errors {
RuntimeError InvalidProcedureCall();  // 5
RuntimeError Overflow();              // 6
RuntimeError TypeMismatch();          // 13
RuntimeError FileNotFound();          // 53
RuntimeError ObjectNotSet();          // 91
RuntimeError InvalidUseOfNull();      // 94
RuntimeError CannotCreateObject();    // 429
RuntimeError UnsupportedMember();     // 438
}  // namespace errors

}  // namespace vantrel
