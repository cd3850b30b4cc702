#ifndef VTRUTILS_PROMO_PROMOHANDLERCALL_H
#define VTRUTILS_PROMO_PROMOHANDLERCALL_H

namespace vtr {

/// While a handler of the host runs, which may destroy the object that called it: the object's mark
/// points here, and its destructor sets what it points at. Private to the library. One thread at a
/// time.
class PromoHandlerCall {
public:
    /// Requires: no handler of the object runs.
    explicit PromoHandlerCall(bool*& markOfObject) : mark(markOfObject) { mark = &gone; }
    PromoHandlerCall(const PromoHandlerCall&) = delete;
    PromoHandlerCall& operator=(const PromoHandlerCall&) = delete;
    ~PromoHandlerCall() {
        if (!gone)
            mark = nullptr;
    }

    /// True: nothing of the object may be touched any more.
    bool Gone() const { return gone; }

private:
    bool*& mark;
    bool gone = false;
};

} // namespace vtr

#endif
