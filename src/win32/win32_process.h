#pragma once

// What a Win32 program with windows needs of its process: standard streams
// that reach whoever started it, and the start-up report of bench/run.

namespace vantrel::win32 {

// A program with windows has no console of its own: its standard output and
// error go to the console it was started from, or to where they were
// redirected. Written as they are, with LF alone, as on Linux.
void UseStartingConsole();

// Start-up measurements (bench/run): once the first window has been
// painted, "shown" and the resident size ("shown 41236 KiB") on standard
// output. Returns the exit code, 0.
int ReportShown();

}  // namespace vantrel::win32
