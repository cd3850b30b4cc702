#ifndef VTRFUTLS_VTRFUTLS_H
#define VTRFUTLS_VTRFUTLS_H

/// Everything that the sibling library offers.
#include "vtrfutls/FileNames.h"
#include "vtrfutls/Log.h"
#include "vtrfutls/RegKey.h"

#endif
