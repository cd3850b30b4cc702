#include "gallery/ObserverModel.h"

#include "gallery/Text.h"

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

enum class Habit { logs, leaves, comesBack, sendsPlay };

struct Description {
    const wchar_t* name;
    int codes[3]; ///< filled up with -1
    Habit habit;
};

constexpr int none = -1;

/// In this order they are added, and so notified.
constexpr Description descriptions[] = {
    {L"Meter", {ObserverModel::play, ObserverModel::stop, none}, Habit::logs},
    {L"Hint", {ObserverModel::play, ObserverModel::stop, none}, Habit::leaves},
    {L"Playlist", {ObserverModel::play, ObserverModel::seek, none}, Habit::comesBack},
    {L"Repeat", {ObserverModel::stop, none, none}, Habit::sendsPlay},
    {L"Clock", {ObserverModel::play, ObserverModel::stop, ObserverModel::seek}, Habit::logs},
};

const wchar_t* TextOf(Habit habit) {
    switch (habit) {
    case Habit::leaves:
        return L"removes itself";
    case Habit::comesBack:
        return L"removes itself, comes back";
    case Habit::sendsPlay:
        return L"sends play at once, nested";
    default:
        return L"only logs";
    }
}

} // namespace

/// What the data pointer of a notification points to.
struct ObserverModel::Delivery {
    int level;
    int received = 0;
};

class ObserverModel::Watcher final : public Observer {
public:
    Watcher(ObserverModel& owner, const Description& description)
        : model(owner), about(description) {}

    void OnNotify(int code, void* data, Observable* source) override;
    void Attach(Observable* player) override;

    std::wstring Name() const { return about.name; }
    std::wstring Codes() const;
    std::wstring Reaction() const { return gallery::TextOf(about.habit); }
    bool Attached() const { return attached; }

    void RemoveFrom(Observable& player);
    void Forget() { attached = false; }

private:
    std::wstring React(const Delivery& delivery, Observable& player);
    std::wstring ComeBack(Observable& player);

    ObserverModel& model;
    const Description& about;
    bool attached = false;
};

std::wstring ObserverModel::Watcher::Codes() const {
    std::wstring text;
    for (const int code : about.codes) {
        if (code != none)
            text += (text.empty() ? L"" : L", ") + NameOf(code);
    }
    return text;
}

void ObserverModel::Watcher::Attach(Observable* player) {
    player->RegisterObservations(this, about.codes[0], about.codes[1], about.codes[2], none);
    model.AddLine(/*level=*/1, Name() + L": Attach",
                  (attached ? L"was registered already for " : L"registers for ") + Codes());
    attached = true;
}

void ObserverModel::Watcher::RemoveFrom(Observable& player) {
    player.RemoveObserver(this);
    attached = false;
}

void ObserverModel::Watcher::OnNotify(int code, void* data, Observable* source) {
    auto& delivery = *static_cast<Delivery*>(data);
    ++delivery.received;
    const std::size_t line = model.AddLine(delivery.level + 1, Name() + L": " + NameOf(code));
    const std::wstring result = React(delivery, *source);
    model.log[line].result = result;
}

std::wstring ObserverModel::Watcher::React(const Delivery& delivery, Observable& player) {
    switch (about.habit) {
    case Habit::leaves:
        RemoveFrom(player);
        return L"removes itself: receives nothing more";
    case Habit::comesBack:
        return ComeBack(player);
    case Habit::sendsPlay:
        model.Send(play, delivery.level + 2);
        return L"sends play before it returns";
    default:
        return {};
    }
}

std::wstring ObserverModel::Watcher::ComeBack(Observable& player) {
    RemoveFrom(player);
    player.AddObserver(this);
    if (attached)
        return L"removes itself, and is attached anew";
    attached = true; // without a call of `Attach`, as it never left
    return L"removes itself and comes back: the removal is cancelled";
}

ObserverModel::ObserverModel() {
    for (const Description& description : descriptions)
        watchers.push_back(std::make_unique<Watcher>(*this, description));
    for (int i = 0; i < Observers(); ++i)
        Add(i);
}

ObserverModel::~ObserverModel() = default;

const ObserverModel::Watcher& ObserverModel::At(int observer) const {
    return *watchers[static_cast<std::size_t>(observer)];
}

ObserverModel::Watcher& ObserverModel::At(int observer) {
    return *watchers[static_cast<std::size_t>(observer)];
}

int ObserverModel::Observers() const {
    return static_cast<int>(std::size(descriptions));
}

std::wstring ObserverModel::Name(int observer) const {
    return At(observer).Name();
}

std::wstring ObserverModel::Codes(int observer) const {
    return At(observer).Codes();
}

std::wstring ObserverModel::Reaction(int observer) const {
    return At(observer).Reaction();
}

bool ObserverModel::Attached(int observer) const {
    return At(observer).Attached();
}

int ObserverModel::AllAttached() const {
    return static_cast<int>(std::count_if(watchers.begin(), watchers.end(),
                                          [](const auto& one) { return one->Attached(); }));
}

void ObserverModel::Add(int observer) {
    AddLine(/*level=*/0, L"AddObserver(" + Name(observer) + L")");
    subject.AddObserver(&At(observer));
}

void ObserverModel::Remove(int observer) {
    AddLine(/*level=*/0, L"RemoveObserver(" + Name(observer) + L")",
            Attached(observer) ? L"" : L"was not there: nothing to do");
    At(observer).RemoveFrom(subject);
}

void ObserverModel::RemoveAll() {
    AddLine(/*level=*/0, L"RemoveAllObservers()");
    subject.RemoveAllObservers();
    for (const auto& watcher : watchers)
        watcher->Forget();
}

std::wstring ObserverModel::NameOf(int code) {
    constexpr const wchar_t* names[] = {L"play", L"stop", L"seek", L"eject"};
    return names[code - play];
}

int ObserverModel::Send(int code, int level) {
    const std::size_t line =
        AddLine(level, Format(L"SendNotification(%d, ...)  ", code) + NameOf(code));
    Delivery delivery{level};
    ++deliveries;
    subject.SendNotification(code, &delivery);
    log[line].result = delivery.received == 0 ? L"nobody is registered"
                                              : Format(L"%d received it", delivery.received);
    return delivery.received;
}

std::size_t ObserverModel::AddLine(int level, const std::wstring& text,
                                   const std::wstring& result) {
    log.push_back({level, text, result});
    return log.size() - 1;
}

} // namespace gallery
