#include "utilities/xml/XMLStorage.h"

namespace vtr {

namespace {

constexpr std::size_t largestBlock = 65536;

} // namespace

void* XMLStorage::TakeAlone(std::size_t size) {
    char* place = static_cast<char*>(std::malloc(aloneHeaderSize + size));
    return place != nullptr ? PutHeader(place + aloneHeaderSize, nullptr) : nullptr;
}

bool XMLStorage::Begin(std::size_t size) {
    const std::size_t room = size > nextSize ? size : nextSize;
    char* place = static_cast<char*>(std::malloc(sizeof(Block) + room));
    if (place == nullptr)
        return false;
    Leave();
    current = reinterpret_cast<Block*>(place);
    current->users = 1;
    at = place + sizeof(Block);
    end = at + room;
    if (nextSize < largestBlock)
        nextSize *= 2;
    return true;
}

void XMLStorage::Leave() {
    if (current != nullptr)
        LoseUser(current);
    current = nullptr;
    at = end = nullptr;
}

} // namespace vtr
