#include "gallery/pages/observers/ObserverModel.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

enum class Habit { logs, leaves, comesBack, sendsPlay };

constexpr int none = -1;

} // namespace

struct ObserverModel::Description {
    const char* nameKey;
    int codes[3]; ///< filled up with -1
    Habit habit;
};

namespace {

/// In this order they are added, and so notified.
constexpr ObserverModel::Description descriptions[] = {
    {"Meter", {ObserverModel::play, ObserverModel::stop, none}, Habit::logs},
    {"Hint", {ObserverModel::play, ObserverModel::stop, none}, Habit::leaves},
    {"Playlist", {ObserverModel::play, ObserverModel::seek, none}, Habit::comesBack},
    {"Repeat", {ObserverModel::stop, none, none}, Habit::sendsPlay},
    {"Clock", {ObserverModel::play, ObserverModel::stop, ObserverModel::seek}, Habit::logs},
};

const char* KeyOf(Habit habit) {
    switch (habit) {
    case Habit::leaves:
        return "Leaves";
    case Habit::comesBack:
        return "ComesBack";
    case Habit::sendsPlay:
        return "SendsPlay";
    default:
        return "OnlyLogs";
    }
}

std::wstring NameOf(const ObserverModel::Description& observer) {
    return gallery::Text(observer.nameKey);
}

std::wstring CodesOf(const ObserverModel::Description& observer) {
    std::wstring text;
    for (const int code : observer.codes) {
        if (code != none)
            text += (text.empty() ? L"" : L", ") + ObserverModel::NameOf(code);
    }
    return text;
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

    const Description& About() const { return about; }
    bool Attached() const { return attached; }

    void RemoveFrom(Observable& player);
    void Forget() { attached = false; }

private:
    /// Both return the key of what came of it, null when there is nothing to tell.
    const char* React(const Delivery& delivery, Observable& player);
    const char* ComeBack(Observable& player);

    ObserverModel& model;
    const Description& about;
    bool attached = false;
};

void ObserverModel::Watcher::Attach(Observable* player) {
    player->RegisterObservations(this, about.codes[0], about.codes[1], about.codes[2], none);
    model.AddLine(
        {/*level=*/1, Call::attach, &about, none, attached ? "WasRegisteredFor" : "RegistersFor"});
    attached = true;
}

void ObserverModel::Watcher::RemoveFrom(Observable& player) {
    player.RemoveObserver(this);
    attached = false;
}

void ObserverModel::Watcher::OnNotify(int code, void* data, Observable* source) {
    auto& delivery = *static_cast<Delivery*>(data);
    ++delivery.received;
    const std::size_t line = model.AddLine({delivery.level + 1, Call::notify, &about, code});
    const char* result = React(delivery, *source);
    model.log[line].resultKey = result;
}

const char* ObserverModel::Watcher::React(const Delivery& delivery, Observable& player) {
    switch (about.habit) {
    case Habit::leaves:
        RemoveFrom(player);
        return "LeavesForGood";
    case Habit::comesBack:
        return ComeBack(player);
    case Habit::sendsPlay:
        model.Send(play, delivery.level + 2);
        return "SendsPlayFirst";
    default:
        return nullptr;
    }
}

const char* ObserverModel::Watcher::ComeBack(Observable& player) {
    RemoveFrom(player);
    player.AddObserver(this);
    if (attached)
        return "IsAttachedAnew";
    attached = true; // without a call of `Attach`, as it never left
    return "ComesBackAtOnce";
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
    return gallery::NameOf(At(observer).About());
}

std::wstring ObserverModel::Codes(int observer) const {
    return CodesOf(At(observer).About());
}

std::wstring ObserverModel::Reaction(int observer) const {
    return gallery::Text(KeyOf(At(observer).About().habit));
}

bool ObserverModel::Attached(int observer) const {
    return At(observer).Attached();
}

int ObserverModel::AllAttached() const {
    return static_cast<int>(std::count_if(watchers.begin(), watchers.end(),
                                          [](const auto& one) { return one->Attached(); }));
}

void ObserverModel::Add(int observer) {
    AddLine({/*level=*/0, Call::addObserver, &At(observer).About(), none});
    subject.AddObserver(&At(observer));
}

void ObserverModel::Remove(int observer) {
    AddLine({/*level=*/0, Call::removeObserver, &At(observer).About(), none,
             Attached(observer) ? nullptr : "WasNotThere"});
    At(observer).RemoveFrom(subject);
}

void ObserverModel::RemoveAll() {
    AddLine({/*level=*/0, Call::removeAll, /*observer=*/nullptr, none});
    subject.RemoveAllObservers();
    for (const auto& watcher : watchers)
        watcher->Forget();
}

std::wstring ObserverModel::NameOf(int code) {
    constexpr const char* keys[] = {"Play", "Stop", "Seek", "Eject"};
    return gallery::Text(keys[code - play]);
}

int ObserverModel::Send(int code, int level) {
    const std::size_t line = AddLine({level, Call::send, /*observer=*/nullptr, code});
    Delivery delivery{level};
    ++deliveries;
    subject.SendNotification(code, &delivery);
    log[line].resultKey = delivery.received == 0 ? "Nobody" : "ReceivedIt";
    log[line].received = delivery.received;
    return delivery.received;
}

std::size_t ObserverModel::AddLine(const LogLine& line) {
    log.push_back(line);
    return log.size() - 1;
}

std::wstring ObserverModel::Text(const LogLine& line) {
    const std::wstring name = line.observer != nullptr ? gallery::NameOf(*line.observer) : L"";
    switch (line.call) {
    case Call::addObserver:
        return L"AddObserver(" + name + L")";
    case Call::removeObserver:
        return L"RemoveObserver(" + name + L")";
    case Call::removeAll:
        return L"RemoveAllObservers()";
    case Call::send:
        return Format(L"SendNotification(%d, ...)  ", line.code) + NameOf(line.code);
    case Call::attach:
        return name + L": Attach";
    default:
        return name + L": " + NameOf(line.code);
    }
}

std::wstring ObserverModel::Result(const LogLine& line) {
    if (line.resultKey == nullptr)
        return {};
    return gallery::Text(
        line.resultKey,
        {line.call == Call::attach ? CodesOf(*line.observer) : std::to_wstring(line.received)});
}

} // namespace gallery
