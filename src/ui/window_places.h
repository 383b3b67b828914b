#pragma once

class QWidget;

namespace vantrel {

// Where a tool window was and how large, kept in the user's settings between
// runs.
inline constexpr char kMonitorGeometryKey[] = "windows/callMonitor";
inline constexpr char kSimulatorGeometryKey[] = "windows/simulator";

void SaveGeometry(const QWidget* window, const char* key);
// False when nothing was kept; the window keeps its size then.
bool RestoreGeometry(QWidget* window, const char* key);

}  // namespace vantrel
