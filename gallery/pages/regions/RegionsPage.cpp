#include "gallery/pages/regions/RegionsPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/regions/RegionCanvas.h"
#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>

namespace gallery {

namespace {

class RegionsPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(canvas.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Restyle() override { canvas.SetLook(Sizes()); }
    void Arrange(int width, int height) override;

    void Consolidate();
    void Clear();
    void ShowState();

    RegionCanvas canvas;
    HWND helpLine = nullptr;
    HWND consolidate = nullptr;
    HWND clear = nullptr;
};

std::wstring SizeAndPlace(const RECT& r) {
    return Text("SizeAndPlace", {Number(r.right - r.left), Number(r.bottom - r.top), Number(r.left),
                                 Number(r.top)});
}

bool RegionsPage::MakeControls() {
    helpLine = AddCaption(MakeWrappedText(Handle(), ID_REGIONS_HELP), "RegionsHelp");
    consolidate = AddButton("Consolidate", ID_REGIONS_CONSOLIDATE, "ConsolidateTip");
    clear = AddButton("Clear", ID_REGIONS_CLEAR, "ClearTip");
    const auto whenChanged = [this](RegionCanvas::Change change, const RECT& r) {
        const bool added = change == RegionCanvas::Change::added;
        Tell(Text(added ? "Added" : "Subtracted", {SizeAndPlace(r)}));
        ShowState();
    };
    if (!canvas.Create(Handle(), ID_REGIONS_CANVAS, whenChanged))
        return false;
    AddCaption(canvas.Handle(), "Region");
    canvas.SetFrame({4, 4, 14, 10});
    ShowState();
    return clear != nullptr;
}

void RegionsPage::Retext() {
    Tell(L"");
    ShowState();
}

void RegionsPage::Arrange(int width, int height) {
    Rows page(Sizes(), width, height, /*expected=*/6);
    page.PutText(Rows::End::top, helpLine, {consolidate, clear});
    page.Places().Put(canvas.Handle(), 0, page.Top(), width, page.Room());
}

void RegionsPage::Command(int id, int /*notification*/) {
    switch (id) {
    case ID_REGIONS_CONSOLIDATE:
        return Consolidate();
    case ID_REGIONS_CLEAR:
        return Clear();
    case IDOK:
        if (GetFocus() == canvas.Handle())
            canvas.AddFrame();
        return;
    case IDCANCEL:
        return canvas.StopDragging();
    default:
        return;
    }
}

void RegionsPage::Consolidate() {
    const int before = canvas.Region().getNumRectangles();
    canvas.Region().consolidate();
    const int after = canvas.Region().getNumRectangles();
    canvas.Redraw();
    Tell(Text("Consolidated", {Number(before), Number(after)}));
    ShowState();
}

void RegionsPage::Clear() {
    canvas.Region().clear();
    canvas.Redraw();
    Tell(L"");
    TakeFocus();
    ShowState();
}

void RegionsPage::ShowState() {
    RectangleList& region = canvas.Region();
    const int count = region.getNumRectangles();
    long area = 0;
    for (int i = 0; i < count; ++i) {
        const RECT& r = *region.getRectangle(i);
        area += (r.right - r.left) * (r.bottom - r.top);
    }
    TellState(Text(count > 0 ? "RegionCounts" : "NoRectangles",
                   {Number(count), Number(area), SizeAndPlace(region.getBounds())}));
    EnableWindow(consolidate, count > 0);
    EnableWindow(clear, count > 0);
    Rearrange();
}

/// Windows of a desk, one of them with holes, and the frame ready to cut another.
bool RegionsPage::ShowExample() {
    RectangleList& region = canvas.Region();
    region.clear();
    RECT added[] = {{3, 3, 27, 19},   {19, 12, 45, 29}, {39, 5, 61, 17},
                    {52, 13, 71, 33}, {6, 23, 22, 38},  {14, 31, 40, 41}};
    RECT subtracted[] = {{9, 8, 17, 14},  {26, 17, 35, 24}, {57, 18, 66, 27},
                         {46, 8, 54, 11}, {20, 34, 33, 38}, {10, 28, 12, 36}};
    RECT islands[] = {{60, 21, 63, 24}, {29, 19, 32, 22}};
    for (RECT& r : added)
        region.add(&r);
    for (RECT& r : subtracted)
        region.subtract(&r);
    for (RECT& r : islands)
        region.add(&r);
    canvas.SetFrame({35, 20, 48, 35});
    Tell(Text("Added", {SizeAndPlace(islands[1])}));
    ShowState();
    return true;
}

} // namespace

std::unique_ptr<Page> MakeRegionsPage() {
    return std::make_unique<RegionsPage>();
}

} // namespace gallery
