#pragma once
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "site/IDialogLogic.h"

namespace vexplot {

// The Qt windows of the control's dialogs, by the name of their logic
// (IDialogLogic::DialogName). A modal entry builds its QDialog over the
// logic, runs it and answers kAnswerOk or kAnswerCancel; a modeless entry
// builds and shows its window and returns it (owned by Qt through its
// parent, closed by the site when the logic's owner asks).
class QtDialogRegistry {
public:
    using RunModal = std::function<int32_t(IDialogLogic& logic, QWidget* parent)>;
    using OpenModeless = std::function<QWidget*(IDialogLogic& logic, QWidget* parent)>;

    // The registry with every dialog of the control.
    static const QtDialogRegistry& BuiltIn();

    void AddModal(std::string name, RunModal run) { modal_[std::move(name)] = std::move(run); }
    void AddModeless(std::string name, OpenModeless open) { modeless_[std::move(name)] = std::move(open); }
    const RunModal* Modal(std::string_view name) const;
    const OpenModeless* Modeless(std::string_view name) const;

private:
    std::map<std::string, RunModal, std::less<>> modal_;
    std::map<std::string, OpenModeless, std::less<>> modeless_;
};

// Adds the control's dialogs to `registry` (BuiltInDialogs.cpp: one line
// per dialog).
void AddBuiltInDialogs(QtDialogRegistry& registry);

}  // namespace vexplot
