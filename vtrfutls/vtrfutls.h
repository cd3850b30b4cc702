#ifndef VTRFUTLS_VTRFUTLS_H
#define VTRFUTLS_VTRFUTLS_H

/// Everything that the sibling library offers.
#include "vtrfutls/FileNames.h"
#include "vtrfutls/FileObj.h"
#include "vtrfutls/InternetAccess.h"
#include "vtrfutls/InternetDownload.h"
#include "vtrfutls/Log.h"
#include "vtrfutls/RefObj.h"
#include "vtrfutls/RegKey.h"

#endif
