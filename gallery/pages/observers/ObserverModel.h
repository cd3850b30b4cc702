#ifndef VTRUTILS_GALLERY_PAGES_OBSERVERS_OBSERVERMODEL_H
#define VTRUTILS_GALLERY_PAGES_OBSERVERS_OBSERVERMODEL_H

#include "utilities/system/objects/Observable.h"

#include <memory>
#include <string>
#include <vector>

namespace gallery {

/// The player that the page "Observers" shows, which is a subject, the observers that a user adds
/// and removes, and a log of what was called and received. One thread at a time.
class ObserverModel {
public:
    struct Description;
    enum Code { play = 1, stop, seek, eject };

    enum class Call { addObserver, removeObserver, removeAll, send, attach, notify };

    /// What happened, in no language yet.
    struct LogLine {
        int level; ///< 0 for what the user asked for, one more for each call inside of it
        Call call;
        const Description* observer; ///< null for a call that names none
        int code;
        const char* resultKey = nullptr; ///< null when there is nothing to tell
        int received = 0;
    };

    /// With all observers added, as the log tells.
    ObserverModel();
    ObserverModel(const ObserverModel&) = delete;
    ObserverModel& operator=(const ObserverModel&) = delete;
    ~ObserverModel();

    int Observers() const;
    std::wstring Name(int observer) const;
    std::wstring Codes(int observer) const;
    std::wstring Reaction(int observer) const;
    bool Attached(int observer) const;
    int AllAttached() const;

    void Add(int observer);
    void Remove(int observer);
    void RemoveAll();

    /// Returns how many observers received it, those of nested deliveries left out.
    int Send(int code) { return Send(code, /*level=*/0); }
    static std::wstring NameOf(int code);

    /// The nested ones included.
    int Deliveries() const { return deliveries; }

    const std::vector<LogLine>& Log() const { return log; }
    static std::wstring Text(const LogLine& line);
    /// "" when there is nothing to tell.
    static std::wstring Result(const LogLine& line);
    void ClearLog() { log.clear(); }

private:
    struct Delivery;
    class Watcher;

    int Send(int code, int level);
    /// Returns the index of the new line.
    std::size_t AddLine(const LogLine& line);
    const Watcher& At(int observer) const;
    Watcher& At(int observer);

    Observable subject;
    std::vector<std::unique_ptr<Watcher>> watchers;
    std::vector<LogLine> log;
    int deliveries = 0;
};

} // namespace gallery

#endif
