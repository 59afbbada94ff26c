#pragma once

namespace vexplot {

// Feeds the process-wide display-change hook from Qt: a screen added or
// removed, the primary screen changed, or a screen's geometry or depth
// changed. Connected while the hook is installed (while controls live),
// disconnected when it is removed.
class QtDisplayWatcher {
public:
    // Hands the hook the Qt watcher and display query; once per process is
    // enough, later calls do nothing.
    static void Install();
};

}  // namespace vexplot
