#ifndef VTRUTILS_GALLERY_PAGES_ONLINE_SOUNDSEARCH_H
#define VTRUTILS_GALLERY_PAGES_ONLINE_SOUNDSEARCH_H

#include "utilities/online/FreeSoundOrg.h"
#include "vtrfutls/InternetAccess.h"

#include <memory>
#include <string>
#include <vector>
#include <windows.h>

namespace gallery {

/// A sound that was found, as the page shows it.
struct Sound {
    std::wstring name;
    std::wstring user;
    std::wstring length;
    std::wstring rate; ///< "-" when the service does not tell
    std::wstring licence;
    std::wstring tags;
    std::wstring details; ///< lines
    std::wstring page;    ///< addresses; "" for none
    std::wstring preview;
    std::wstring licencePage;
};

/// What is searched for. `sort` and `licence` are indices of the page's choices.
struct SoundQuestion {
    std::wstring text;
    int sort = 0;
    int licence = 0;
    bool withoutOffence = false;
};

/// One search at a time in the sound repository, in pages of results. One thread at a time.
class SoundSearch {
public:
    static constexpr int pageSize = 10;

    enum class State {
        idle,       ///< nothing was asked yet, or it was cancelled
        running,    ///< `Poll` is to be called again
        found,      ///< there is a reply, with sounds or without
        notStarted, ///< the question is too long, or the host is none
        noAnswer,   ///< no reply in time, or the service refused
        notReadable ///< a reply of another kind
    };

    /// What is under way is given up. `page` counts from 0.
    State Start(const SoundQuestion& question, int page);
    State Poll();
    void Cancel();
    /// Makes the texts of sounds anew, after another language was chosen.
    void UpdateTexts();

    State Current() const { return state; }
    const std::vector<Sound>& Sounds() const { return sounds; }
    int Page() const { return page; }
    int Total() const { return total; }
    bool HasNext() const { return (page + 1) * pageSize < total; }

private:
    void TakeSounds();

    MyInternetAccess access{"vtrutils gallery"};
    std::unique_ptr<CFreeSoundOrg> repository; ///< uses `access`
    State state = State::idle;
    ULONGLONG begun = 0;
    int page = 0;
    int total = 0;
    std::vector<Sound> sounds;
};

} // namespace gallery

#endif
