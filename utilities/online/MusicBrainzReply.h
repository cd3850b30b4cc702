#ifndef VTRUTILS_ONLINE_MUSICBRAINZREPLY_H
#define VTRUTILS_ONLINE_MUSICBRAINZREPLY_H

#include "utilities/base/PtrArray.h"
#include "utilities/online/CDLookup.h"

class CXMLNode;

namespace vtr {

/// The records of one reply of the music service. Private to the library. One thread at a time.
class MusicBrainzReply {
public:
    explicit MusicBrainzReply(_cdRequestType asked) : type(asked) {}
    MusicBrainzReply(const MusicBrainzReply&) = delete;
    MusicBrainzReply& operator=(const MusicBrainzReply&) = delete;
    ~MusicBrainzReply();

    /// False if the file is not XML or has no list of what was asked for. Call it once.
    bool Read(const char* path);

    /// Of all entries that the service has, as it says; of songs, those in the reply.
    int Total() const { return total; }

    /// Appends the records to the list, whose owner frees them. Those for whose node there is no
    /// memory are freed.
    void MoveTo(CMyList& list);

private:
    template <class Record>
    void Add(const CXMLNode& node);

    _cdRequestType type;
    int total = 0;
    PtrArray<void> records;
};

} // namespace vtr

#endif
