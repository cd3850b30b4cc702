#include "gallery/pages/system/SystemPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/system/LoadChart.h"
#include "gallery/pages/system/LoadMeter.h"
#include "gallery/pages/system/SystemFacts.h"
#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

constexpr UINT_PTR measureTimer = 1;
constexpr UINT second = 1000;

class SystemPage final : public Page {
public:
    void Command(int id, int notification) override;
    void Shown() override;
    void TakeFocus() override { SetFocus(factList.Handle()); }
    bool ShowExample() override;

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Restyle() override { chart.SetLook(Sizes()); }
    void Arrange(int width, int height) override;

    void StartMeasuring();
    void WatchProcess();
    void Measure();
    void AddLoad(long long time, const LoadMeter::Load& load);
    void ShowState();
    void ClearChart();
    void SwitchOn();

    std::vector<SystemFact> facts;
    LoadMeter meter;
    LoadMeter::Load lastLoad;
    bool example = false; ///< the chart shows no measurement

    ListView factList;
    HWND processLabel = nullptr;
    HWND processName = nullptr;
    HWND clear = nullptr;
    HWND switchOn = nullptr;
    LoadChart chart;
};

bool SystemPage::MakeControls() {
    const auto cell = [this](int row, int column) {
        const SystemFact& fact = facts[static_cast<std::size_t>(row)];
        return column == 0 ? Text(fact.nameKey) : fact.value;
    };
    if (!AddList(factList, "SystemFacts", ID_SYSTEM_FACTS, ListView::Titles::shown, cell))
        return false;
    factList.AddColumn("SystemFact");
    factList.AddColumn("Value");
    processLabel = AddLabel("ProcessLabel", ID_SYSTEM_PROCESS_LABEL);
    processName = MakeEdit(Handle(), ID_SYSTEM_PROCESS);
    clear = AddButton("ClearChart", ID_SYSTEM_CLEAR, "ClearChartTip");
    switchOn = AddButton("SwitchCountersOn", ID_SYSTEM_SWITCH_ON, "SwitchCountersOnTip");
    if (!chart.Create(Handle(), ID_SYSTEM_CHART))
        return false;
    AddCaption(chart.Handle(), "ProcessorLoad");
    SetText(processName, L"gallery");
    return switchOn != nullptr;
}

void SystemPage::Retext() {
    facts = SystemFacts();
    factList.SetRows(static_cast<int>(facts.size()));
    ShowState();
}

void SystemPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/7);
    // All properties, where that leaves half of the page to the chart.
    const int line = Sizes().Line() + Sizes().Pixels(7);
    const int rows = static_cast<int>(facts.size()) + 1;
    const int listHeight = std::min(page.Room() / 2, rows * line + Sizes().Pixels(10));
    page.Places().Put(factList.Handle(), 0, 0, width, listHeight);
    page.Skip(listHeight + page.Gap());
    page.Put(End::top, {.label = processLabel, .field = processName, .buttons = {clear, switchOn}});
    page.Places().Put(chart.Handle(), 0, page.Top(), width, page.Room());
    factList.FitColumns(Sizes(), width, /*stretched=*/1);
}

void SystemPage::Shown() {
    Retext();
    StartMeasuring();
    Rearrange();
}

void SystemPage::Command(int id, int notification) {
    switch (id) {
    case ID_SYSTEM_PROCESS:
        if (notification == EN_CHANGE)
            WatchProcess();
        return;
    case ID_SYSTEM_CLEAR:
        return ClearChart();
    case ID_SYSTEM_SWITCH_ON:
        return SwitchOn();
    default:
        return;
    }
}

LRESULT SystemPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    switch (kind) {
    case WM_SHOWWINDOW:
        // Nothing is measured while another page is shown.
        if (wParam != FALSE)
            SetTimer(Handle(), measureTimer, second, /*lpTimerFunc=*/nullptr);
        else
            KillTimer(Handle(), measureTimer);
        break;
    case WM_TIMER:
        Measure();
        return 0;
    default:
        break;
    }
    return Page::OnMessage(kind, wParam, lParam);
}

void SystemPage::StartMeasuring() {
    example = false;
    meter.Start();
    chart.Clear();
    Measure();
    TellState(Text(meter.Offered() ? "LoadIsMeasured" : "NoCounters"));
}

void SystemPage::WatchProcess() {
    meter.Watch(TextOf(processName));
    chart[LoadChart::process].history.Clear();
    // The next measurement tells.
    lastLoad.process.reset();
    lastLoad.processRuns = true;
    ShowState();
}

void SystemPage::Measure() {
    if (!example)
        AddLoad(static_cast<long long>(GetTickCount64()), meter.Take());
}

void SystemPage::AddLoad(long long time, const LoadMeter::Load& load) {
    const auto add = [time](LoadHistory& history, const std::optional<double>& percent) {
        if (percent)
            history.Add(time, *percent);
        else
            history.Skip();
    };
    add(chart[LoadChart::machine].history, load.machine);
    add(chart[LoadChart::process].history, load.process);
    lastLoad = load;
    ShowState();
    chart.Show(time);
}

void SystemPage::ShowState() {
    const auto number = [](const std::optional<double>& percent) {
        return percent ? Text("Percent", {Number(std::lround(*percent))}) : L"...";
    };
    const std::wstring name = TextOf(processName);
    chart[LoadChart::machine].legend = Text("LoadOfMachine", {number(lastLoad.machine)});
    chart[LoadChart::process].legend = lastLoad.processRuns
                                           ? Text("LoadOfProcess", {name, number(lastLoad.process)})
                                           : Text("NoSuchProcess", {name});
    chart.SetNote(example || meter.Offered() ? L"" : Text("NotMeasured"));
}

void SystemPage::ClearChart() {
    chart.Clear();
    Tell(Text("ChartCleared"));
}

void SystemPage::SwitchOn() {
    const bool done = CCpuUsage().EnablePerformaceCounters(1) != 0;
    StartMeasuring();
    Tell(Text(done ? "CountersSwitchedOn" : "CountersNotSwitchedOn"));
}

/// A minute of a machine on which a program starts, works and ends.
bool SystemPage::ShowExample() {
    example = true;
    chart.Clear();
    constexpr int loads[][2] = {
        {8, -1},  {11, -1}, {9, -1},  {14, -1}, {10, -1}, {7, -1},  {12, -1}, {31, 18},
        {58, 46}, {73, 60}, {81, 66}, {78, 69}, {84, 70}, {92, 71}, {96, 74}, {88, 70},
        {79, 65}, {83, 68}, {71, 59}, {64, 52}, {69, 50}, {60, 47}, {44, 33}, {29, 17},
        {22, 11}, {17, 6},  {19, 4},  {15, 5},  {12, 3},  {16, 4},  {13, 2}};
    long long time = 0;
    for (const auto& load : loads) {
        LoadMeter::Load sample{.machine = load[0], .process = {}, .processRuns = load[1] >= 0};
        if (sample.processRuns)
            sample.process = load[1];
        AddLoad(time, sample);
        time += 2000;
    }
    TellState(Text("LoadIsExample"));
    return true;
}

} // namespace

std::unique_ptr<Page> MakeSystemPage() {
    return std::make_unique<SystemPage>();
}

} // namespace gallery
