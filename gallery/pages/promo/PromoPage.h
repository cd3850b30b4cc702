#ifndef VTRUTILS_GALLERY_PAGES_PROMO_PROMOPAGE_H
#define VTRUTILS_GALLERY_PAGES_PROMO_PROMOPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// Plays a promo script on a stage, with its steps and its text below, and tries the effects on
/// what is shown.
std::unique_ptr<Page> MakePromoPage();

} // namespace gallery

#endif
