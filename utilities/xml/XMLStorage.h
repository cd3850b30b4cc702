#ifndef VTRUTILS_XML_XMLSTORAGE_H
#define VTRUTILS_XML_XMLSTORAGE_H

#include <cstddef>

namespace vtr {

/// Memory for the nodes and values of a document: many objects, each with its texts behind it, lie
/// in one block, which goes when the last of them has gone. So each object can be deleted by itself
/// and outlive the document, while a document takes few allocations.
/// Private to the library. One thread at a time, for all that lies in one storage's blocks.
class XMLStorage {
public:
    XMLStorage() = default;
    XMLStorage(const XMLStorage&) = delete;
    XMLStorage& operator=(const XMLStorage&) = delete;
    ~XMLStorage() { Leave(); }

    /// Aligned for pointers; null when memory runs out.
    void* Take(std::size_t size);

    /// A block for one object.
    static void* TakeAlone(std::size_t size);

    /// Frees what either gave. Null is ignored.
    static void Release(void* object);

private:
    struct Block {
        std::size_t users; ///< objects in it, and the storage while it fills the block
    };

    bool Begin(std::size_t size);
    void Leave();
    static void LoseUser(Block* block);

    Block* current = nullptr;
    char* at = nullptr;
    char* end = nullptr;
    std::size_t nextSize = 1024;
};

} // namespace vtr

#endif
