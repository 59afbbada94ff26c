#pragma once
#include <cmath>
#include <initializer_list>
#include <string>

#include "site/IDialogLogic.h"

namespace vexplot {

// What the four annotation property dialogs share: the window's caption
// and the OK step. The fields are public members of each dialog, filled
// from the object when the dialog is made; the window (or a script) edits
// them and calls Accept, which checks every field before it writes any:
// on a refusal the object is unchanged and `error` says which field and
// why. Cancel is simply not calling Accept.
class AnnotationDialog : public IDialogLogic {
public:
    virtual const char* Caption() const = 0;
    virtual bool Accept(std::string* error) = 0;

protected:
    // False (with the message) when any of `values` is NaN or infinite.
    static bool CheckFinite(std::initializer_list<double> values, const char* field, std::string* error) {
        for (double v : values)
            if (!std::isfinite(v)) {
                if (error) *error = std::string("Please enter a finite number for ") + field + ".";
                return false;
            }
        return true;
    }
};

}  // namespace vexplot
