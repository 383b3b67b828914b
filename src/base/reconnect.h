#pragma once

namespace vantrel {

class Console;
class ProcessErrorReport;
class ServerLink;

inline constexpr char16_t kReconnectEntry[] = u"&Reconnect to the server";

// Tools > Reconnect to the server, on either front-end (and a script's
// `menu "Tools" "Reconnect to the server"`): with keep-going on, the server
// is created again, traced like the first creation, and later calls go to
// it; a creation that fails is reported and the console goes on. Without
// keep-going a box says that the entry needs it: there, the first failed
// call has already ended the console.
void ReconnectToServer(Console& console, ServerLink& link, ProcessErrorReport& report);

}  // namespace vantrel
