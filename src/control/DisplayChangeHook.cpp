#include "control/DisplayChangeHook.h"

#include <algorithm>

namespace vexplot {

DisplayChangeHook& DisplayChangeHook::Instance() {
    static DisplayChangeHook hook;
    return hook;
}

void DisplayChangeHook::SetPlatform(Watcher watcher, Query query) {
    std::lock_guard guard(lock_);
    // A watcher that arrives while controls live takes over from now on.
    const bool reinstall = installed_;
    if (reinstall) Remove();
    watcher_ = std::move(watcher);
    query_ = std::move(query);
    if (reinstall) Install();
}

void DisplayChangeHook::Register(IDisplayChangeListener* listener) {
    std::lock_guard guard(lock_);
    if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end()) return;
    listeners_.push_back(listener);
    if (!installed_) Install();
}

void DisplayChangeHook::Unregister(IDisplayChangeListener* listener) {
    std::lock_guard guard(lock_);
    const auto it = std::find(listeners_.begin(), listeners_.end(), listener);
    if (it == listeners_.end()) return;
    listeners_.erase(it);
    if (listeners_.empty() && installed_) Remove();
}

void DisplayChangeHook::Notify(const ScreenMode& mode) {
    std::lock_guard guard(lock_);
    // A listener may unregister itself or another one while it handles the
    // change (a host closing a control), so each is looked up again.
    const std::vector<IDisplayChangeListener*> snapshot = listeners_;
    for (IDisplayChangeListener* listener : snapshot)
        if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end())
            listener->OnDisplayChange(mode);
}

ScreenMode DisplayChangeHook::Current() {
    std::lock_guard guard(lock_);
    return query_ ? query_() : ScreenMode{};
}

bool DisplayChangeHook::Installed() {
    std::lock_guard guard(lock_);
    return installed_;
}

size_t DisplayChangeHook::Count() {
    std::lock_guard guard(lock_);
    return listeners_.size();
}

int DisplayChangeHook::InstallCount() {
    std::lock_guard guard(lock_);
    return installs_;
}

void DisplayChangeHook::Install() {
    installed_ = true;
    ++installs_;
    if (watcher_) remove_ = watcher_();
}

void DisplayChangeHook::Remove() {
    installed_ = false;
    if (remove_) remove_();
    remove_ = nullptr;
}

}  // namespace vexplot
