#ifndef VTRUTILS_XML_XMLSTORAGE_H
#define VTRUTILS_XML_XMLSTORAGE_H

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace vtr {

/// Memory for the nodes and values of a document: many objects, each with its texts after it, are
/// in one block, which is freed with the last of them. So each object can be deleted by itself and
/// outlive the document, while a document takes few allocations. Private to the library. One thread
/// at a time, for all that lies in one storage's blocks.
class XMLStorage {
public:
    XMLStorage() = default;
    XMLStorage(const XMLStorage&) = delete;
    XMLStorage& operator=(const XMLStorage&) = delete;
    ~XMLStorage() { Leave(); }

    /// Aligned for pointers; null when memory runs out.
    void* Take(std::size_t size) {
        const std::size_t needed = headerSize + ((size + headerSize - 1) & ~(headerSize - 1));
        if (static_cast<std::size_t>(end - at) < needed && !Begin(needed))
            return nullptr;
        char* object = PutHeader(at + headerSize, current);
        at += needed;
        ++current->users;
        return object;
    }

    /// A block for one object.
    static void* TakeAlone(std::size_t size);

    /// Frees what either gave. Null is ignored.
    static void Release(void* object) {
        if (object == nullptr)
            return;
        Block* block = nullptr;
        std::memcpy(&block, static_cast<char*>(object) - headerSize, sizeof(void*));
        if (block != nullptr)
            LoseUser(block);
        else
            std::free(static_cast<char*>(object) - aloneHeaderSize);
    }

private:
    struct Block {
        std::size_t users; ///< objects in it, and the storage while it fills the block
    };

    /// Before each object is a pointer to the block that it is in, null for one alone.
    static constexpr std::size_t headerSize = sizeof(void*);
    /// What hosts create with `new` is aligned as `malloc` aligns.
    static constexpr std::size_t aloneHeaderSize = 16;

    static char* PutHeader(char* object, void* block) {
        std::memcpy(object - headerSize, &block, sizeof block);
        return object;
    }

    bool Begin(std::size_t size);
    void Leave();

    static void LoseUser(Block* block) {
        if (--block->users == 0)
            std::free(block);
    }

    Block* current = nullptr;
    char* at = nullptr;
    char* end = nullptr;
    std::size_t nextSize = 1024;
};

} // namespace vtr

#endif
