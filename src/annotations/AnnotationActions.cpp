#include "annotations/AnnotationActions.h"

#include <cmath>
#include <memory>

#include "annotations/CGD_AnnotationList.h"
#include "annotations/CGD_DiffTracer.h"
#include "annotations/CGD_Label.h"
#include "annotations/CGD_Marker.h"
#include "annotations/CGD_Region.h"
#include "annotations/CGD_Tracer.h"
#include "annotations/MarkerLetters.h"
#include "model/CGD_GraphObjectList.h"
#include "model/IViewHost.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {

namespace {

bool Finite(std::initializer_list<double> values) {
    for (double v : values)
        if (!std::isfinite(v)) return false;
    return true;
}

bool HasData(IViewHost& host) {
    CGD_GraphObjectList* graphs = host.GetGraphObjects();
    return graphs && graphs->Active();
}

// Binds `annotation` to the host's engine and hands it to the list.
template <class T>
T* Register(IViewHost& host, std::unique_ptr<T> annotation) {
    CGD_AnnotationList* list = host.GetAnnotations();
    if (!list) return nullptr;
    return static_cast<T*>(&list->Add(std::move(annotation)));
}

template <class T, class... Args>
std::unique_ptr<T> Attached(IViewHost& host, Args... args) {
    auto annotation = std::make_unique<T>(args...);
    annotation->Attach(host.GetEngine(), nullptr, &host);
    return annotation;
}

}  // namespace

CGD_Marker* AnnotationActions::AddMarker(IViewHost& host, double x, double y, double z) {
    if (!host.GetAnnotations() || !HasData(host) || !Finite({x, y, z})) return nullptr;
    auto marker = Attached<CGD_Marker>(host);
    marker->SetPosition(x, y, z);
    marker->SetSelected(false);
    marker->SetDrawLines(true);
    marker->SetName(MarkerLetters::Next());
    marker->AttachInfoWindow(host.GetInfoWindow());
    CGD_Marker* added = Register(host, std::move(marker));
    added->UpdateScreenPoint();
    Refresh(host);
    return added;
}

CGD_Label* AnnotationActions::AddLabel(IViewHost& host, const std::string& caption, double x, double y, double z) {
    if (!host.GetAnnotations() || !HasData(host) || !Finite({x, y, z})) return nullptr;
    auto label = Attached<CGD_Label>(host);
    label->SetPosition(x, y, z);
    label->MoveText(x, y, z);
    label->SetSelected(false);
    label->SetCaption(caption);
    label->UpdateText();
    CGD_Label* added = Register(host, std::move(label));
    Refresh(host);
    return added;
}

CGD_Region* AnnotationActions::AddRegion(IViewHost& host, double x1, double y1, double z1, double x2, double y2,
                                         double z2, bool internal) {
    if (!host.GetAnnotations() || !HasData(host) || !Finite({x1, y1, z1, x2, y2, z2})) return nullptr;
    CGD_Region* region = Register(host, Attached<CGD_Region>(host, internal));
    region->MoveCorners(x1, y1, z1, x2, y2, z2);
    region->SetSelected(false);
    region->AttachInfoWindow(host.GetInfoWindow());
    region->UpdateInfoWindow();
    region->NotifySelection();
    Refresh(host);
    return region;
}

CGD_Tracer* AnnotationActions::AddTracer(IViewHost& host) {
    if (!host.GetAnnotations()) return nullptr;
    auto tracer = Attached<CGD_Tracer>(host);
    tracer->AttachInfoWindow(host.GetInfoWindow());
    return Register(host, std::move(tracer));
}

CGD_DiffTracer* AnnotationActions::AddDiffTracer(IViewHost& host, double x, double y, double z) {
    if (!host.GetAnnotations() || !Finite({x, y, z})) return nullptr;
    auto tracer = Attached<CGD_DiffTracer>(host);
    tracer->SetPosition(x, y, z);
    tracer->AttachInfoWindow(host.GetInfoWindow());
    return Register(host, std::move(tracer));
}

bool AnnotationActions::Move(IViewHost& host, CGD_Annotation& annotation, double x, double y, double z) {
    CGD_AnnotationList* list = host.GetAnnotations();
    if (!list || !list->Contains(&annotation) || !Finite({x, y, z})) return false;
    if (auto* region = dynamic_cast<CGD_Region*>(&annotation)) {
        const double dx = x - region->GetX(), dy = y - region->GetY(), dz = z - region->GetZ();
        region->SetPosition(x, y, z);
        region->SetSecondCorner(region->GetX2() + dx, region->GetY2() + dy, region->GetZ2() + dz);
        region->UpdateInfoWindow();
        region->NotifySelection();
    } else if (auto* label = dynamic_cast<CGD_Label*>(&annotation)) {
        label->MoveText(label->TextX() + x - label->GetX(), label->TextY() + y - label->GetY(),
                        label->TextZ() + z - label->GetZ());
        label->SetPosition(x, y, z);
    } else {
        annotation.SetPosition(x, y, z);
        annotation.UpdateInfoWindow();
    }
    Refresh(host);
    return true;
}

bool AnnotationActions::Delete(IViewHost& host, CGD_Annotation* annotation) {
    CGD_AnnotationList* list = host.GetAnnotations();
    if (!list || !list->Remove(annotation)) return false;
    Refresh(host);
    return true;
}

void AnnotationActions::Select(IViewHost& host, CGD_Annotation* annotation) {
    if (CGD_AnnotationList* list = host.GetAnnotations()) list->Select(annotation);
    host.Redraw(false);
}

void AnnotationActions::Refresh(IViewHost& host) {
    host.RecalcLayout();
    host.Redraw(true);
}

}  // namespace vexplot
