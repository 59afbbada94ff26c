#pragma once

namespace vexplot::python {

// The Qt side of windowed controls, for a Python process that has no event
// loop of its own. Everything runs on the thread that imported the module.
class EventLoop {
public:
    // Makes sure a QApplication exists (creating one the first time) and
    // installs the interactive prompt's input hook. Raises RuntimeError
    // when there is no display to open windows on.
    static void EnsureApplication();

    // Delivers the pending window events; with `milliseconds` > 0 keeps
    // doing so for that long (a script's pause that leaves the window
    // alive). Does nothing before the first window was made.
    static void ProcessEvents(int milliseconds);

    // Runs the event loop until every window is closed, or until Ctrl+C
    // (which raises KeyboardInterrupt).
    static void Exec();

private:
    // Called by the interactive prompt while it waits for a line: runs the
    // event loop until standard input has something to read.
    static int InputHook();
};

}  // namespace vexplot::python
