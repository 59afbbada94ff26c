#pragma once
#include "com/IUnknown.h"

namespace vexplot {

class IStream;

// An object that can name the class that loads it back.
class IPersist : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{0000010C-0000-0000-C000-000000000046}");

    virtual HRESULT GetClassID(CLSID* clsid) = 0;  // slot 3

protected:
    ~IPersist() = default;
};

// Saving to and loading from a stream; Load leaves the object unchanged when
// it fails.
class IPersistStream : public IPersist {
public:
    using Base = IPersist;
    static constexpr IID kIid = GUID::FromLiteral("{00000109-0000-0000-C000-000000000046}");

    virtual HRESULT IsDirty() = 0;                                 // slot 4: S_OK when changed since the last save
    virtual HRESULT Load(IStream* stream) = 0;                     // slot 5
    virtual HRESULT Save(IStream* stream, bool clearDirty) = 0;    // slot 6
    virtual HRESULT GetSizeMax(uint64_t* size) = 0;                // slot 7

protected:
    ~IPersistStream() = default;
};

inline constexpr uint32_t STGM_READ = 0x0;
inline constexpr uint32_t STGM_SHARE_DENY_WRITE = 0x20;

// Saving to and loading from a named file. On failure Load leaves the object
// unchanged and describes the fault through SetErrorInfo; Save never
// destroys an existing file when it fails.
class IPersistFile : public IPersist {
public:
    using Base = IPersist;
    static constexpr IID kIid = GUID::FromLiteral("{0000010B-0000-0000-C000-000000000046}");

    virtual HRESULT IsDirty() = 0;                                          // slot 4
    virtual HRESULT Load(const char* fileName, uint32_t mode) = 0;          // slot 5
    virtual HRESULT Save(const char* fileName, bool remember) = 0;          // slot 6
    virtual HRESULT SaveCompleted(const char* fileName) = 0;                // slot 7
    virtual HRESULT GetCurFile(char* buffer, uint32_t size) = 0;            // slot 8: UTF-8, terminated

protected:
    ~IPersistFile() = default;
};

// Runs an object that needs a start step before use; objects without it are
// already running, which is what OleRun assumes when the interface is absent.
class IRunnableObject : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{00000126-0000-0000-C000-000000000046}");

    virtual HRESULT Run() = 0;  // slot 3

protected:
    ~IRunnableObject() = default;
};

}  // namespace vexplot
