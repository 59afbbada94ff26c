#include "automation/CoRegion.h"

#include "annotations/CGD_Region.h"
#include "automation/AnnotationRows.h"

namespace vexplot {

CoRegion::CoRegion(CGD_Region* region) : CoAnnotation(region) {}

ComPtr<CoAnnotation> CoRegion::Make(CGD_Region* region) { return MakeComObject<CoRegion>(region); }

CGD_Region* CoRegion::Region() const { return static_cast<CGD_Region*>(Annotation()); }

// IRegion. Every setter acts whether or not the value changes; Style keeps
// the old value for anything outside 0..3, Spacing stores any value.
const BasicDispatchTable<CoRegion>& CoRegion::Table() {
    using namespace annotation_rows;
    static const BasicDispatchTable<CoRegion> table = [] {
        BasicDispatchTable<CoRegion> t;
        auto live = [](CoRegion& s) { return s.Attached(); };
        Property(t, 1, "Color", VT_I4, live, [](CoRegion& s) { return Variant(static_cast<int32_t>(s.Region()->Color())); },
                 [](CoRegion& s, DispatchCall& c) {
                     s.Region()->SetColor(static_cast<uint32_t>(c.I4(0)));
                     s.Redraw();
                 });
        Property(t, 2, "Style", VT_I2, live, [](CoRegion& s) { return Variant(static_cast<int16_t>(s.Region()->Style())); },
                 [](CoRegion& s, DispatchCall& c) {
                     s.Region()->SetStyle(c.I2(0));
                     s.RefreshOwner();
                 });
        Property(t, 3, "Spacing", VT_I2, live, [](CoRegion& s) { return Variant(s.Region()->Spacing()); },
                 [](CoRegion& s, DispatchCall& c) {
                     s.Region()->SetSpacing(c.I2(0));
                     s.RefreshOwner();
                 });
        Property(t, 4, "Selected", VT_BOOL, live, [](CoRegion& s) { return Variant::Bool(s.Region()->IsSelected()); },
                 [](CoRegion& s, DispatchCall& c) {
                     s.Select(c.Bool(0));
                     s.Redraw();
                 });
        Property(t, 5, "EnableEvent", VT_BOOL, live,
                 [](CoRegion& s) { return Variant::Bool(s.Region()->EnableEvent()); },
                 [](CoRegion& s, DispatchCall& c) {
                     s.Region()->SetEnableEvent(c.Bool(0));
                     s.RefreshOwner();
                 });
        Method(t, 6, "Move", VT_BOOL,
               {{"x1", VT_R8}, {"y1", VT_R8}, {"z1", VT_R8}, {"x2", VT_R8}, {"y2", VT_R8}, {"z2", VT_R8}}, live,
               [](CoRegion& s, DispatchCall& c) {
                   if (!Finite({c.R8(0), c.R8(1), c.R8(2), c.R8(3), c.R8(4), c.R8(5)})) return Variant::Bool(false);
                   s.Region()->MoveCorners(c.R8(0), c.R8(1), c.R8(2), c.R8(3), c.R8(4), c.R8(5));
                   s.Region()->UpdateInfoWindow();
                   s.Region()->NotifySelection();
                   s.RefreshOwner();
                   return Variant::Bool(true);
               });
        Method(t, 7, "Properties", VT_BOOL, {}, live, [](CoRegion& s, DispatchCall&) {
            s.Region()->ShowProperties();
            return Variant::Bool(true);
        });
        Method(t, 8, "Position", VT_BOOL,
               {{"x1", VT_R8, true}, {"y1", VT_R8, true}, {"z1", VT_R8, true}, {"x2", VT_R8, true},
                {"y2", VT_R8, true}, {"z2", VT_R8, true}},
               live, [](CoRegion& s, DispatchCall& c) {
                   const CGD_Region& r = *s.Region();
                   const double values[] = {r.GetX(), r.GetY(), r.GetZ(), r.GetX2(), r.GetY2(), r.GetZ2()};
                   for (size_t i = 0; i < 6; ++i) c.Out(i, Variant(values[i]));
                   return Variant::Bool(true);
               });
        return t;
    }();
    return table;
}

HRESULT CoRegion::GetIDsOfNames(const IID&, const char* const* names, uint32_t count, LCID, DISPID* ids) {
    return Table().GetIDsOfNames(names, count, ids);
}

HRESULT CoRegion::Invoke(DISPID member, const IID&, LCID, uint16_t flags, DispParams* params, Variant* result,
                         ExcepInfo* excepInfo, uint32_t* argErr) {
    ComPtr<CoRegion> self(this);
    return Table().Invoke(*this, member, flags, params, result, excepInfo, argErr);
}

}  // namespace vexplot
