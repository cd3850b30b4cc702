#ifndef VTRUTILS_GALLERY_PAGES_PROMO_STAGEEVENTS_H
#define VTRUTILS_GALLERY_PAGES_PROMO_STAGEEVENTS_H

namespace gallery {

/// The gallery's answer to the special events of a promo script: puts today's date ("date") or the
/// user's name ("user") in the place of "%1". Leaves the text as it is for other events and where
/// the new one does not fit. One thread at a time.
bool RewriteEventText(const char* event, const char* text, char* out, int outSize, void* context);

} // namespace gallery

#endif
