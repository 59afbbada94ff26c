#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "site/IDialogLogic.h"

namespace vexplot {

// The about box: what the control is and what it runs on, as lines of a
// label and a value ("Graph engine", "OpenGL").
class AboutLogic final : public IDialogLogic {
public:
    static constexpr std::string_view kName = "About";

    using Line = std::pair<std::string, std::string>;

    AboutLogic(std::string title, std::vector<Line> lines) : title_(std::move(title)), lines_(std::move(lines)) {}
    std::string_view DialogName() const override { return kName; }
    // "Vexplot"
    const std::string& Title() const { return title_; }
    const std::vector<Line>& Lines() const { return lines_; }

private:
    std::string title_;
    std::vector<Line> lines_;
};

}  // namespace vexplot
