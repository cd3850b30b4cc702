#include "tests/support/SteppedThread.h"

#include <cstdint>
#include <utility>
#include <x86intrin.h>

namespace {

constexpr char dll[] = "vtrutils.dll";
constexpr DWORD trap = 0x100; // the flag that has the processor stop after each instruction

/// The `SteppedThread` of the calling thread; null in others.
const DWORD slot = TlsAlloc();

SteppedThread* Current() {
    return static_cast<SteppedThread*>(TlsGetValue(slot));
}

std::uintptr_t moduleStart = 0;
std::uintptr_t moduleEnd = 0;

/// A locked instruction, an exchange with memory, which is one without saying so, or a call.
bool IsPlace(const unsigned char* code) {
    if ((*code & 0xF0) == 0x40)
        ++code; // a prefix for registers
    const bool farther = *code == 0xFF && ((code[1] & 0x38) == 0x10 || (code[1] & 0x38) == 0x20);
    return *code == 0xF0 || *code == 0x86 || *code == 0x87 || *code == 0xE8 || farther;
}

void FindModule() {
    moduleStart = reinterpret_cast<std::uintptr_t>(GetModuleHandleA(dll));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(moduleStart);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(
        moduleStart + static_cast<std::uintptr_t>(dos->e_lfanew));
    moduleEnd = moduleStart + headers->OptionalHeader.SizeOfImage;
}

} // namespace

ScheduleWalk::ScheduleWalk()
    : wait(GetModuleHandleA(dll), "KERNEL32.dll", "WaitForSingleObject",
           reinterpret_cast<void*>(&SteppedThread::Wait)),
      enter(GetModuleHandleA(dll), "KERNEL32.dll", "EnterCriticalSection",
            reinterpret_cast<void*>(&SteppedThread::Enter)),
      handler(AddVectoredExceptionHandler(/*First=*/1, &SteppedThread::OnStep)) {
    FindModule();
}

ScheduleWalk::~ScheduleWalk() {
    RemoveVectoredExceptionHandler(handler);
}

SteppedThread::SteppedThread()
    : begin(CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/FALSE,
                         /*bInitialState=*/FALSE, /*lpName=*/nullptr)),
      thread([this] { Work(); }) {}

SteppedThread::~SteppedThread() {
    UntilEnded({this});
    operation = nullptr;
    SetEvent(begin.Get());
    thread.join();
}

SteppedThread::State SteppedThread::Begin(unsigned n, std::function<void()> newOperation) {
    operation = std::move(newOperation);
    stopAt = n;
    places = 0;
    afterPlace = false;
    state = State::running;
    SetEvent(begin.Get());
    return UntilHalted();
}

void SteppedThread::Work() {
    while (WaitForSingleObject(begin.Get(), INFINITE) == WAIT_OBJECT_0 && operation) {
        TlsSetValue(slot, this);
        if (stopAt > 0)
            __writeeflags(__readeflags() | trap);
        operation();
        TlsSetValue(slot, nullptr);
        state = State::ended;
    }
}

SteppedThread::State SteppedThread::UntilHalted() const {
    while (state == State::running)
        SwitchToThread();
    return state;
}

SteppedThread::State SteppedThread::UntilSettled(HANDLE event) const {
    for (;;) {
        const State halted = UntilHalted();
        const unsigned before = waits;
        if (halted != State::waits || waitsFor != event ||
            WaitForSingleObject(event, 0) != WAIT_OBJECT_0)
            return halted;
        while (state == State::waits && waits == before)
            SwitchToThread();
    }
}

void SteppedThread::GoOn() {
    State stopped = State::stopped;
    state.compare_exchange_strong(stopped, State::running);
}

void SteppedThread::UntilEnded(std::initializer_list<SteppedThread*> threads) {
    for (bool ended = false; !ended; SwitchToThread()) {
        ended = true;
        for (SteppedThread* each : threads) {
            each->GoOn();
            ended = ended && each->HasEnded();
        }
    }
}

bool SteppedThread::IsAtItsStop(std::uintptr_t instruction) {
    const bool inside = instruction >= moduleStart && instruction < moduleEnd;
    const bool before = inside && IsPlace(reinterpret_cast<const unsigned char*>(instruction));
    const bool after = inside && afterPlace;
    afterPlace = before || !inside;
    const bool atStop = (before || after) && ++places == stopAt;
    cameToAStop = cameToAStop || atStop;
    return atStop;
}

void SteppedThread::Pause() {
    SteppedThread* self = Current();
    self->state = State::stopped;
    while (self->state == State::stopped)
        SwitchToThread();
}

long SteppedThread::OnStep(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode != static_cast<DWORD>(EXCEPTION_SINGLE_STEP))
        return EXCEPTION_CONTINUE_SEARCH;
    SteppedThread* self = Current();
    const auto at = reinterpret_cast<std::uintptr_t>(exception->ExceptionRecord->ExceptionAddress);
    if (self != nullptr && self->IsAtItsStop(at))
        Pause();
    else if (self != nullptr)
        exception->ContextRecord->EFlags |= trap;
    return EXCEPTION_CONTINUE_EXECUTION;
}

template <class Call>
auto SteppedThread::Waiting(const void* object, Call call) {
    SteppedThread* self = Current();
    if (self != nullptr) {
        self->waitsFor = object;
        ++self->waits;
        self->state = State::waits;
    }
    struct Goes {
        SteppedThread* self;
        ~Goes() {
            if (self != nullptr)
                self->state = State::running;
        }
    } const goes{self};
    return call();
}

DWORD SteppedThread::Wait(HANDLE object, DWORD milliseconds) {
    return Waiting(object, [=] { return WaitForSingleObject(object, milliseconds); });
}

void SteppedThread::Enter(CRITICAL_SECTION* section) {
    if (!TryEnterCriticalSection(section))
        Waiting(section, [=] { EnterCriticalSection(section); });
}
