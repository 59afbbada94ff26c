#include "annotations/CGD_Tracer.h"

#include "annotations/CoordinateText.h"
#include "model/ArchiveClass.h"

namespace vexplot {

namespace {

constexpr const char* kNoPoint = "\tX(-) Y(-) Z(-)";

}  // namespace

CGD_Tracer::CGD_Tracer() : CGD_Annotation(AnnotationKind::Tracer) {}

CGD_Tracer::~CGD_Tracer() = default;

const ArchiveClass& CGD_Tracer::RuntimeClass() {
    static const ArchiveClass cls("CGD_Tracer", 1, [] { return std::make_unique<CGD_Tracer>(); });
    return cls;
}

void CGD_Tracer::Serialize(CArchive&) {}

std::string CGD_Tracer::InfoLine() const {
    return tracing_ ? CoordinateText::Join({"\t", CoordinateTriple(x_, y_, z_, true)}) : std::string(kNoPoint);
}

void CGD_Tracer::AttachInfoWindow(IInfoWindow* window) {
    info_ = window;
    if (window) OpenInfoSection(InfoKind::Tracer, "Tracer:", {kNoPoint});
}

void CGD_Tracer::SetPosition(double x, double y, double z) {
    CGD_Annotation::SetPosition(x, y, z);
    tracing_ = true;
}

void CGD_Tracer::ClearPoint() {
    tracing_ = false;
    SetInfoLine(1, kNoPoint);
}

void CGD_Tracer::Draw() { SetInfoLine(1, InfoLine()); }

void CGD_Tracer::RemoveFromInfoWindow() { CloseInfoSection(); }

}  // namespace vexplot
