#include "com/OleStream.h"

#include <array>

#include "com/ClassRegistry.h"
#include "com/ComPtr.h"
#include "com/ErrorInfo.h"

namespace vexplot {

namespace {

using GuidBytes = std::array<uint8_t, 16>;

GuidBytes ToBytes(const GUID& g) {
    GuidBytes b{};
    for (int i = 0; i < 4; ++i) b[static_cast<size_t>(i)] = static_cast<uint8_t>(g.Data1 >> (8 * i));
    for (int i = 0; i < 2; ++i) b[static_cast<size_t>(4 + i)] = static_cast<uint8_t>(g.Data2 >> (8 * i));
    for (int i = 0; i < 2; ++i) b[static_cast<size_t>(6 + i)] = static_cast<uint8_t>(g.Data3 >> (8 * i));
    for (size_t i = 0; i < 8; ++i) b[8 + i] = g.Data4[i];
    return b;
}

GUID FromBytes(const GuidBytes& b) {
    GUID g;
    g.Data1 = uint32_t{b[0]} | uint32_t{b[1]} << 8 | uint32_t{b[2]} << 16 | uint32_t{b[3]} << 24;
    g.Data2 = static_cast<uint16_t>(b[4] | b[5] << 8);
    g.Data3 = static_cast<uint16_t>(b[6] | b[7] << 8);
    for (size_t i = 0; i < 8; ++i) g.Data4[i] = b[8 + i];
    return g;
}

HRESULT Failed(HRESULT hr, const std::string& text) {
    SetErrorInfo(GUID_NULL, text);
    return hr;
}

}  // namespace

HRESULT OleSaveToStream(IPersistStream* object, IStream* stream) {
    if (!stream) return E_POINTER;
    CLSID clsid = GUID_NULL;
    if (object) {
        if (HRESULT hr = object->GetClassID(&clsid); FAILED(hr)) return hr;
    }
    const GuidBytes bytes = ToBytes(clsid);
    uint32_t written = 0;
    if (HRESULT hr = stream->Write(bytes.data(), bytes.size(), &written); FAILED(hr)) return hr;
    if (written != bytes.size()) return STG_E_MEDIUMFULL;
    return object ? object->Save(stream, true) : S_OK;
}

HRESULT OleLoadFromStream(IStream* stream, const IID& iid, void** out) {
    if (!stream || !out) return E_POINTER;
    *out = nullptr;
    GuidBytes bytes{};
    uint32_t read = 0;
    if (HRESULT hr = stream->Read(bytes.data(), bytes.size(), &read); FAILED(hr)) return hr;
    if (read != bytes.size()) return Failed(STG_E_READFAULT, "embedded object: the stream ends inside its class id");
    const CLSID clsid = FromBytes(bytes);
    if (clsid == GUID_NULL) return S_FALSE;

    ComPtr<IPersistStream> object;
    HRESULT hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC, IPersistStream::kIid,
                                  object.ReleaseAndGetVoidAddress());
    if (FAILED(hr)) return Failed(hr, "embedded object of class " + clsid.ToString() + " cannot be created");
    if (hr = object->Load(stream); FAILED(hr)) return hr;  // the object described its own failure
    return object->QueryInterface(iid, out);
}

}  // namespace vexplot
