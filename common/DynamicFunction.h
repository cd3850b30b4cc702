#ifndef VTR_COMMON_DYNAMICFUNCTION_H
#define VTR_COMMON_DYNAMICFUNCTION_H

#include <atomic>
#include <windows.h>

namespace vtr {

/// A function that not every Windows has, looked up once in the process; `Function` is its type
/// with its calling convention. The module stays loaded. For static storage. Private to the
/// library. Locked by itself.
template <class Function>
class DynamicFunction {
public:
    constexpr DynamicFunction(const char* moduleName, const char* functionName)
        : module(moduleName), name(functionName) {}
    DynamicFunction(const DynamicFunction&) = delete;
    DynamicFunction& operator=(const DynamicFunction&) = delete;

    /// Null where the module or the function is missing. Two threads that come first both look it
    /// up, with the same result.
    Function* Get() {
        if (!lookedUp.load(std::memory_order_acquire)) {
            const HMODULE loaded = LoadLibraryA(module);
            const FARPROC found = loaded != nullptr ? GetProcAddress(loaded, name) : nullptr;
            address.store(reinterpret_cast<Function*>(reinterpret_cast<void*>(found)),
                          std::memory_order_relaxed);
            lookedUp.store(true, std::memory_order_release);
        }
        return address.load(std::memory_order_relaxed);
    }

private:
    const char* module;
    const char* name;
    std::atomic<Function*> address{nullptr};
    std::atomic<bool> lookedUp{false};
};

} // namespace vtr

#endif
