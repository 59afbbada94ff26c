#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tools/IToolContext.h"

namespace vexplot {

// One interaction tool: what the mouse and the keys do to the plot while
// it is the active tool. The control forwards the view window's input to
// the active tool; the tool creates, selects, moves or deletes annotations
// or changes the visible range, through its IToolContext.
//
// Every tool shows the position under the cursor on each move (the common
// handler) and ends a drag or a creation in progress on Escape. Without
// data every handler does nothing.
class CTool {
public:
    // The help texts the tools show while they are active, by string id.
    static constexpr uint32_t kHelpTracer = 57665;
    static constexpr uint32_t kHelpDiffTracer = 57666;
    static constexpr uint32_t kHelpMarker = 57667;
    static constexpr uint32_t kHelpSelect = 57668;
    static constexpr uint32_t kHelpZoom = 57669;
    static constexpr uint32_t kHelpPan = 57670;
    // The text of one of those ids; empty for any other.
    static std::string HelpString(uint32_t id);

    // The tool of a tool command (cmd::kSelect ... cmd::kRegion); null for
    // any other command.
    static std::unique_ptr<CTool> Make(int32_t command, IToolContext& context);

    CTool(IToolContext& context, int32_t command) : context_(context), command_(command) {}
    virtual ~CTool() = default;
    CTool(const CTool&) = delete;
    CTool& operator=(const CTool&) = delete;

    // Creates what the tool needs and shows its help text.
    virtual void Activate();
    // Takes down what Activate made; the tool is about to be replaced.
    virtual void Deactivate();
    // The view window's mouse input, and a key pressed over it.
    void OnMouse(const MouseEvent& event);
    void OnKey(int32_t key);

    int32_t Command() const { return command_; }
    const std::string& HelpText() const { return help_; }
    // The annotation the tool works on: the selected object, the created
    // tracer, the rubber band; null when none.
    CGD_Annotation* Current() const { return current_; }
    // True between a button press the tool took and its release.
    bool Dragging() const { return dragging_; }
    // The cursor over the plot while this tool is active.
    virtual CursorShape Cursor() const { return CursorShape::Cross; }

protected:
    virtual void ButtonDown(PixelPoint pixel, const MouseEvent& event) = 0;
    virtual void DoubleClick(PixelPoint pixel) = 0;
    virtual void MouseMove(PixelPoint pixel, const MouseEvent& event) = 0;
    virtual void ButtonUp(PixelPoint pixel) = 0;
    virtual void Key(int32_t key) = 0;
    // Escape: ends the drag or creation in progress, undoing it.
    virtual void Cancel() { dragging_ = false; }

    // The grid point under `pixel`; the point of the last move is reused,
    // so that a move costs one pick however many handlers ask.
    bool PointAt(PixelPoint pixel, Point3* point);

    IToolContext& context_;
    int32_t command_;
    std::string help_;
    CGD_Annotation* current_ = nullptr;
    bool dragging_ = false;
    PixelPoint last_;  // where the last mouse event was

private:
    void ShowPosition(PixelPoint pixel, bool select);

    std::optional<PixelPoint> probed_;  // the pixel probed last, and what it gave
    std::optional<Point3> probe_;
};

}  // namespace vexplot
