#pragma once

class QWidget;

namespace vantrel {

// Where a tool window was and how large, kept in the user's settings between
// runs.
inline constexpr char kMonitorGeometryKey[] = "windows/callMonitor";
inline constexpr char kSimulatorGeometryKey[] = "windows/simulator";

// A tool window of its own beside the console, not one of the console's: the
// console's modal boxes and windows leave it usable. It goes when the
// console goes.
void KeepBeside(QWidget& tool, QWidget& console);

void SaveGeometry(const QWidget* window, const char* key);
// False when nothing was kept; the window keeps its size then.
bool RestoreGeometry(QWidget* window, const char* key);

}  // namespace vantrel
