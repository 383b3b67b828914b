#pragma once

#include "server/runtime_error.h"

#include <string_view>

#include <windows.h>
#include <oleauto.h>

namespace vantrel::com {

// How a failed automation call reaches the technician as a run-time error.
//
// A server that raises an error fills EXCEPINFO and answers DISP_E_EXCEPTION:
//   1. a non-zero wCode is the error number as it stands;
//   2. otherwise an scode of FACILITY_CONTROL carries the number in its low
//      word (a server written in the platform's own language raises its
//      numbers that way: 0x800A0005 is error 5);
//   3. otherwise the scode itself is the number, as a signed 32-bit value
//      (0x80040201 shows as -2147220991);
//   4. with neither code, the number is 440, "Automation error".
// The description is the server's own where it gave one, else the
// platform's text for the number.
//
// A failing HRESULT, without EXCEPINFO or as the scode in it, maps to the
// platform's error for it: DISP_E_UNKNOWNNAME, DISP_E_MEMBERNOTFOUND and
// DISP_E_UNKNOWNINTERFACE are 438, DISP_E_BADPARAMCOUNT 450,
// DISP_E_PARAMNOTOPTIONAL 449, DISP_E_PARAMNOTFOUND and DISP_E_NONAMEDARGS
// 448, DISP_E_TYPEMISMATCH, DISP_E_BADVARTYPE and TYPE_E_TYPEMISMATCH 13,
// DISP_E_OVERFLOW 6, DISP_E_DIVBYZERO 11, E_OUTOFMEMORY 7, E_NOTIMPL 445, DISP_E_NOTACOLLECTION
// 451, DISP_E_BADINDEX and TYPE_E_OUTOFBOUNDS 9, DISP_E_UNKNOWNLCID 447,
// DISP_E_ARRAYISLOCKED 10, E_NOINTERFACE 430, E_INVALIDARG 5,
// E_ACCESSDENIED 70, FACILITY_CONTROL its low word, and any other the
// HRESULT as a signed number with "Automation error" and the system's text
// for it. Each number comes with the platform's text for it
// (RunTimeErrorText) unless the server gave its own.
RuntimeError ErrorFromHresult(HRESULT result);
RuntimeError ErrorFromException(EXCEPINFO& exception);

// Creation failures: 430 when the object has no dispatch interface, 429 for
// every other reason (not registered, the server failing to start).
RuntimeError ErrorFromCreation(HRESULT result);

RuntimeError OutOfMemory();  // 7

// The server side of the same rule: fills EXCEPINFO so that a client
// following it sees the error's own number and description. Numbers 1 to
// 65535 go as FACILITY_CONTROL, a negative number as the scode itself.
void FillException(const RuntimeError& error, std::wstring_view source, EXCEPINFO& exception);

// The scode FillException chooses for the error.
HRESULT ScodeOf(const RuntimeError& error);

// Frees the BSTRs of an EXCEPINFO and empties it.
void ClearException(EXCEPINFO& exception);

}  // namespace vantrel::com
