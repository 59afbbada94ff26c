#include "automation/CoMarker.h"

#include "annotations/CGD_Marker.h"
#include "automation/AnnotationRows.h"

namespace vexplot {

CoMarker::CoMarker(CGD_Marker* marker) : CoAnnotation(marker) {}

ComPtr<CoAnnotation> CoMarker::Make(CGD_Marker* marker) { return MakeComObject<CoMarker>(marker); }

CGD_Marker* CoMarker::Marker() const { return static_cast<CGD_Marker*>(Annotation()); }

// IMarker. The setters act whether or not the value changes, and the colour
// and selection only redraw, as scripts have always seen them behave.
const BasicDispatchTable<CoMarker>& CoMarker::Table() {
    using namespace annotation_rows;
    static const BasicDispatchTable<CoMarker> table = [] {
        BasicDispatchTable<CoMarker> t;
        auto live = [](CoMarker& s) { return s.Attached(); };
        Property(t, 1, "Color", VT_I4, live, [](CoMarker& s) { return Variant(static_cast<int32_t>(s.Marker()->Color())); },
                 [](CoMarker& s, DispatchCall& c) {
                     s.Marker()->SetColor(static_cast<uint32_t>(c.I4(0)));
                     s.Redraw();
                 });
        Property(t, 2, "Caption", VT_BSTR, live, [](CoMarker& s) { return Variant(s.Marker()->GetCaption()); },
                 [](CoMarker& s, DispatchCall& c) {
                     s.Marker()->SetCaption(c.Bstr(0));
                     s.RefreshOwner();
                 });
        Property(t, 3, "DrawLines", VT_BOOL, live, [](CoMarker& s) { return Variant::Bool(s.Marker()->DrawLines()); },
                 [](CoMarker& s, DispatchCall& c) {
                     s.Marker()->SetDrawLines(c.Bool(0));
                     s.RefreshOwner();
                 });
        Property(t, 4, "Selected", VT_BOOL, live, [](CoMarker& s) { return Variant::Bool(s.Marker()->IsSelected()); },
                 [](CoMarker& s, DispatchCall& c) {
                     s.Select(c.Bool(0));
                     s.Redraw();
                 });
        Method(t, 5, "Move", VT_BOOL, {{"x", VT_R8}, {"y", VT_R8}, {"z", VT_R8}}, live,
               [](CoMarker& s, DispatchCall& c) {
                   if (!Finite({c.R8(0), c.R8(1), c.R8(2)})) return Variant::Bool(false);
                   s.Marker()->SetPosition(c.R8(0), c.R8(1), c.R8(2));
                   s.Marker()->UpdateInfoWindow();
                   s.RefreshOwner();
                   return Variant::Bool(true);
               });
        Method(t, 6, "Properties", VT_BOOL, {}, live, [](CoMarker& s, DispatchCall&) {
            s.Marker()->ShowProperties();
            return Variant::Bool(true);
        });
        Method(t, 7, "Position", VT_BOOL, {{"x", VT_R8, true}, {"y", VT_R8, true}, {"z", VT_R8, true}}, live,
               [](CoMarker& s, DispatchCall& c) {
                   c.Out(0, Variant(s.Marker()->GetX()));
                   c.Out(1, Variant(s.Marker()->GetY()));
                   c.Out(2, Variant(s.Marker()->GetZ()));
                   return Variant::Bool(true);
               });
        return t;
    }();
    return table;
}

HRESULT CoMarker::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID, DISPID* ids) {
    return Table().GetIDsOfNames(names, count, ids);
}

HRESULT CoMarker::Invoke(DISPID member, const IID&, LCID, uint16_t flags, DispParams* params, Variant* result,
                         ExcepInfo* excepInfo, uint32_t* argErr) {
    ComPtr<CoMarker> self(this);
    return Table().Invoke(*this, member, flags, params, result, excepInfo, argErr);
}

}  // namespace vexplot
