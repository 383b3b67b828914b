#include "runtime_error.h"

#include <utility>

namespace vantrel {

RuntimeError::RuntimeError(int number, std::string description)
    : std::runtime_error(description)
    , number_(number)
    , description_(std::move(description)) {}

namespace errors {
RuntimeError InvalidProcedureCall() { return {5, "Invalid procedure call or argument"}; }
RuntimeError Overflow() { return {6, "Overflow"}; }
RuntimeError TypeMismatch() { return {13, "Type mismatch"}; }
RuntimeError FileNotFound() { return {53, "File not found"}; }
RuntimeError ObjectNotSet() { return {91, "Object variable or With block variable not set"}; }
RuntimeError InvalidUseOfNull() { return {94, "Invalid use of Null"}; }
RuntimeError CannotCreateObject() { return {429, "ActiveX component can't create object"}; }
RuntimeError UnsupportedMember() { return {438, "Object doesn't support this property or method"}; }
}  // namespace errors

}  // namespace vantrel
