#include "utilities/base/CodePage.h"

#include "vtrfutls/FileNames.h"

#include <atomic>

namespace vtr {

namespace {

std::atomic<unsigned> currentCodePage{0};

} // namespace

unsigned CurrentCodePage() {
    return currentCodePage.load(std::memory_order_relaxed);
}

void SetCurrentCodePage(unsigned codePage) {
    currentCodePage.store(codePage, std::memory_order_relaxed);
    SetCodePageForFiles(codePage);
}

} // namespace vtr
