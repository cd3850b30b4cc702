#ifndef VTRUTILS_GALLERY_PAGES_PROMO_STEPLIST_H
#define VTRUTILS_GALLERY_PAGES_PROMO_STEPLIST_H

#include "gallery/pages/promo/ScriptSteps.h"
#include "gallery/widgets/ListView.h"

#include <string>
#include <vector>

namespace gallery {

/// The steps of a script as rows of a list, that on the stage marked. One thread at a time.
class StepList {
public:
    /// Marks nothing.
    void SetSteps(std::vector<ScriptStep> newSteps);
    const std::vector<ScriptStep>& Steps() const { return steps; }
    /// How many different scripts the steps belong to.
    int Scripts() const;

    /// Marks the step of that text, and selects it unless the user walks through the list.
    void Mark(const ScriptPosition& at);

    /// The name of the section that is the selected step; "" for none.
    std::wstring SelectedSection() const;

    void SetWidths(const Look& look, int width);

    // To be made with the page.
    ListView list;
    void AddColumns();
    std::wstring Cell(int row, int column) const;

private:
    std::vector<ScriptStep> steps;
    int marked = -1;
    int text = 0; ///< the number of the text on the stage
};

} // namespace gallery

#endif
