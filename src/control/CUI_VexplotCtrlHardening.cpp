// Guards of the control against what hosts and files hand in: names that
// pick the right reader for a file.
#include <algorithm>
#include <cctype>

#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

bool CUI_VexplotCtrl::IsPlotFileName(const std::string& path) {
    if (path.size() < 4) return false;
    std::string extension = path.substr(path.size() - 4);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".vxg";
}

}  // namespace vexplot
