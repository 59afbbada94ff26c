#include "automation/CoLabel.h"

#include "annotations/CGD_Label.h"
#include "automation/AnnotationRows.h"

namespace vexplot {

CoLabel::CoLabel(CGD_Label* label) : CoAnnotation(label) {}

ComPtr<CoAnnotation> CoLabel::Make(CGD_Label* label) { return MakeComObject<CoLabel>(label); }

CGD_Label* CoLabel::Label() const { return static_cast<CGD_Label*>(Annotation()); }

// ILabel. Selected, DrawLine, AppendCoordinates and Style act only on a
// change; Color and Caption act always: the asymmetry scripts know.
const BasicDispatchTable<CoLabel>& CoLabel::Table() {
    using namespace annotation_rows;
    static const BasicDispatchTable<CoLabel> table = [] {
        BasicDispatchTable<CoLabel> t;
        auto live = [](CoLabel& s) { return s.Attached(); };
        Property(t, 1, "Color", VT_I4, live, [](CoLabel& s) { return Variant(static_cast<int32_t>(s.Label()->Color())); },
                 [](CoLabel& s, DispatchCall& c) {
                     s.Label()->SetColor(static_cast<uint32_t>(c.I4(0)));
                     s.Redraw();
                 });
        Property(t, 2, "Selected", VT_BOOL, live, [](CoLabel& s) { return Variant::Bool(s.Label()->IsSelected()); },
                 [](CoLabel& s, DispatchCall& c) {
                     if (c.Bool(0) == s.Label()->IsSelected()) return;
                     s.Select(c.Bool(0));
                     s.Redraw();
                 });
        Property(t, 3, "DrawLine", VT_BOOL, live, [](CoLabel& s) { return Variant::Bool(s.Label()->DrawLine()); },
                 [](CoLabel& s, DispatchCall& c) {
                     if (c.Bool(0) == s.Label()->DrawLine()) return;
                     s.Label()->SetDrawLine(c.Bool(0));
                     s.RefreshOwner();
                 });
        Property(t, 4, "AppendCoordinates", VT_BOOL, live,
                 [](CoLabel& s) { return Variant::Bool(s.Label()->AppendCoordinates()); },
                 [](CoLabel& s, DispatchCall& c) {
                     if (c.Bool(0) == s.Label()->AppendCoordinates()) return;
                     s.Label()->SetAppendCoordinates(c.Bool(0));
                     s.RefreshOwner();
                 });
        Property(t, 5, "Style", VT_I2, live, [](CoLabel& s) { return Variant(s.Label()->Style()); },
                 [](CoLabel& s, DispatchCall& c) {
                     if (c.I2(0) == s.Label()->Style()) return;
                     s.Label()->SetStyle(c.I2(0));
                     s.RefreshOwner();
                 });
        Property(t, 6, "Caption", VT_BSTR, live, [](CoLabel& s) { return Variant(s.Label()->GetCaption()); },
                 [](CoLabel& s, DispatchCall& c) {
                     s.Label()->SetCaption(c.Bstr(0));
                     s.RefreshOwner();
                 });
        Method(t, 7, "Move", VT_BOOL, {{"x", VT_R8}, {"y", VT_R8}, {"z", VT_R8}}, live,
               [](CoLabel& s, DispatchCall& c) {
                   if (!Finite({c.R8(0), c.R8(1), c.R8(2)})) return Variant::Bool(false);
                   s.Label()->SetPosition(c.R8(0), c.R8(1), c.R8(2));
                   s.RefreshOwner();
                   return Variant::Bool(true);
               });
        Method(t, 8, "MoveText", VT_BOOL, {{"x", VT_R8}, {"y", VT_R8}, {"z", VT_R8}}, live,
               [](CoLabel& s, DispatchCall& c) {
                   if (!Finite({c.R8(0), c.R8(1), c.R8(2)})) return Variant::Bool(false);
                   s.Label()->MoveText(c.R8(0), c.R8(1), c.R8(2));
                   s.RefreshOwner();
                   return Variant::Bool(true);
               });
        Method(t, 9, "Properties", VT_BOOL, {}, live, [](CoLabel& s, DispatchCall&) {
            s.Label()->ShowProperties();
            return Variant::Bool(true);
        });
        Method(t, 10, "Position", VT_BOOL, {{"x", VT_R8, true}, {"y", VT_R8, true}, {"z", VT_R8, true}}, live,
               [](CoLabel& s, DispatchCall& c) {
                   c.Out(0, Variant(s.Label()->GetX()));
                   c.Out(1, Variant(s.Label()->GetY()));
                   c.Out(2, Variant(s.Label()->GetZ()));
                   return Variant::Bool(true);
               });
        return t;
    }();
    return table;
}

HRESULT CoLabel::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID, DISPID* ids) {
    return Table().GetIDsOfNames(names, count, ids);
}

HRESULT CoLabel::Invoke(DISPID member, const IID&, LCID, uint16_t flags, DispParams* params, Variant* result,
                        ExcepInfo* excepInfo, uint32_t* argErr) {
    ComPtr<CoLabel> self(this);
    return Table().Invoke(*this, member, flags, params, result, excepInfo, argErr);
}

}  // namespace vexplot
