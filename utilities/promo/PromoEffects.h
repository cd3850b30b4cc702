#ifndef VTRUTILS_PROMO_PROMOEFFECTS_H
#define VTRUTILS_PROMO_PROMOEFFECTS_H

namespace vtr {

/// The transitions by their numbers. Private to the library. Immutable and safe.
enum PromoEffect {
    promoNone,
    promoPerCharacter,
    promoColorFade,
    promoFramesCrossfade,
    promoFramesFade,
    promoFadePop,
    promoRectOut,
    promoRectIn,
    promoWipeRight,
    promoWipeLeft,
    promoColorWipeRight,
    promoColorWipeLeft,
};

/// The frame before is the source of the transition.
constexpr bool EffectUsesPrevFrame(int effect) {
    return effect == promoFramesCrossfade || effect == promoFramesFade || effect == promoFadePop ||
           effect == promoWipeRight || effect == promoWipeLeft;
}

/// The source is a frame of one colour.
constexpr bool EffectUsesSolidColorSource(int effect) {
    return effect == promoColorFade || effect == promoRectOut || effect == promoRectIn ||
           effect == promoColorWipeRight || effect == promoColorWipeLeft;
}

} // namespace vtr

#endif
