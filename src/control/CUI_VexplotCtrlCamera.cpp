// The camera methods: each setter reads the whole record from the 3-D view,
// replaces one component and writes the record back, so the components a
// host does not touch keep the engine's values.
#include <cmath>

#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

namespace {

double& Component(CameraVector& v, int component) { return component == 0 ? v.x : component == 1 ? v.y : v.z; }

}  // namespace

double CUI_VexplotCtrl::CameraComponent(bool center, int component) {
    IGraphView3D* view = GetView3D();
    if (!view) return 0.0;
    CameraVector v{};
    const HRESULT hr = center ? view->GetCameraCenter(&v) : view->GetCameraPosition(&v);
    return SUCCEEDED(hr) ? Component(v, component) : 0.0;
}

// A camera value that is not a number would leave the view nowhere to look
// from; it is refused aloud, as any invalid property value is.
bool CUI_VexplotCtrl::AcceptCameraValue(double value) {
    if (std::isfinite(value)) return true;
    FireError(kErrorInvalidValue, kTextInvalidValue);
    return false;
}

void CUI_VexplotCtrl::SetCameraComponent(bool center, int component, double value) {
    IGraphView3D* view = GetView3D();
    if (!view || !AcceptCameraValue(value)) return;
    CameraVector v{};
    const HRESULT hr = center ? view->GetCameraCenter(&v) : view->GetCameraPosition(&v);
    if (FAILED(hr)) return;
    Component(v, component) = value;
    if (center)
        view->SetCameraCenter(v);
    else
        view->SetCameraPosition(v);
    LayoutAndRedrawIn3D();
}

double CUI_VexplotCtrl::GetCamXPosition() { return CameraComponent(false, 0); }
double CUI_VexplotCtrl::GetCamYPosition() { return CameraComponent(false, 1); }
double CUI_VexplotCtrl::GetCamZPosition() { return CameraComponent(false, 2); }
void CUI_VexplotCtrl::SetCamXPosition(double value) { SetCameraComponent(false, 0, value); }
void CUI_VexplotCtrl::SetCamYPosition(double value) { SetCameraComponent(false, 1, value); }
void CUI_VexplotCtrl::SetCamZPosition(double value) { SetCameraComponent(false, 2, value); }
double CUI_VexplotCtrl::GetCamXCenter() { return CameraComponent(true, 0); }
double CUI_VexplotCtrl::GetCamYCenter() { return CameraComponent(true, 1); }
double CUI_VexplotCtrl::GetCamZCenter() { return CameraComponent(true, 2); }
void CUI_VexplotCtrl::SetCamXCenter(double value) { SetCameraComponent(true, 0, value); }
void CUI_VexplotCtrl::SetCamYCenter(double value) { SetCameraComponent(true, 1, value); }
void CUI_VexplotCtrl::SetCamZCenter(double value) { SetCameraComponent(true, 2, value); }

float CUI_VexplotCtrl::GetCamDist() {
    float value = 0.0f;
    if (IGraphView3D* view = GetView3D(); !view || FAILED(view->GetDistance(&value))) return 0.0f;
    return value;
}

void CUI_VexplotCtrl::SetCamDist(float value) {
    if (IGraphView3D* view = GetView3D(); view && AcceptCameraValue(value)) {
        view->SetDistance(value);
        LayoutAndRedrawIn3D();
    }
}

float CUI_VexplotCtrl::GetCamElev() {
    float value = 0.0f;
    if (IGraphView3D* view = GetView3D(); !view || FAILED(view->GetElevation(&value))) return 0.0f;
    return value;
}

void CUI_VexplotCtrl::SetCamElev(float value) {
    if (IGraphView3D* view = GetView3D(); view && AcceptCameraValue(value)) {
        view->SetElevation(value);
        LayoutAndRedrawIn3D();
    }
}

float CUI_VexplotCtrl::GetCamAzim() {
    float value = 0.0f;
    if (IGraphView3D* view = GetView3D(); !view || FAILED(view->GetAzimuth(&value))) return 0.0f;
    return value;
}

void CUI_VexplotCtrl::SetCamAzim(float value) {
    if (IGraphView3D* view = GetView3D(); view && AcceptCameraValue(value)) {
        view->SetAzimuth(value);
        LayoutAndRedrawIn3D();
    }
}

}  // namespace vexplot
