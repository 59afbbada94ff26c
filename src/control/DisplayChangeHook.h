#pragma once
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace vexplot {

// The colour depth and size of the screen the controls draw on.
struct ScreenMode {
    int32_t depth = 0;   // bits per pixel
    int32_t width = 0;   // pixels
    int32_t height = 0;
    friend bool operator==(const ScreenMode&, const ScreenMode&) = default;
};

// What a live control does when the display changes.
class IDisplayChangeListener {
public:
    virtual void OnDisplayChange(const ScreenMode& mode) = 0;

protected:
    ~IDisplayChangeListener() = default;
};

// The one process-wide list of live controls that hear about display
// changes, and the platform watcher that reports them. Controls register
// when their windows are made and unregister when destroyed; the watcher is
// installed when the list gains its first control and removed when it loses
// its last, so it runs exactly while the list is not empty. One lock guards
// the list and the watcher; the listeners are called under it, on the
// thread that reports the change (the user-interface thread).
class DisplayChangeHook {
public:
    // Installs the platform's watcher: it must call Notify on each change
    // and returns the function that removes it again.
    using Watcher = std::function<std::function<void()>()>;
    // The display as the platform reports it now.
    using Query = std::function<ScreenMode()>;

    static DisplayChangeHook& Instance();

    // The platform side (the Qt site) sets these once; without them (a
    // headless process) the hook still keeps its list and serves Notify, and
    // the display reads as all zeros.
    void SetPlatform(Watcher watcher, Query query);

    void Register(IDisplayChangeListener* listener);
    void Unregister(IDisplayChangeListener* listener);
    // Calls every registered listener with `mode`.
    void Notify(const ScreenMode& mode);
    ScreenMode Current();

    bool Installed();
    size_t Count();
    // How many times the hook has been installed since the process began.
    int InstallCount();

private:
    DisplayChangeHook() = default;
    void Install();
    void Remove();

    std::recursive_mutex lock_;
    std::vector<IDisplayChangeListener*> listeners_;
    Watcher watcher_;
    Query query_;
    std::function<void()> remove_;
    bool installed_ = false;
    int installs_ = 0;
};

}  // namespace vexplot
