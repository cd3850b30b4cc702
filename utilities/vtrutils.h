#ifndef VTRUTILS_VTRUTILS_H
#define VTRUTILS_VTRUTILS_H

/// Everything that the library offers. Each header may also be included by itself.
#include "utilities/containers/ByteQueue.h"
#include "utilities/containers/HashTable.h"
#include "utilities/containers/LastDirList.h"
#include "utilities/containers/MRUList.h"
#include "utilities/containers/MegaArrayList.h"
#include "utilities/containers/MegaList.h"
#include "utilities/containers/MyArrayList.h"
#include "utilities/containers/MyList.h"
#include "utilities/containers/RectangleList.h"
#include "utilities/containers/Stack.h"
#include "utilities/containers/StringDynArray.h"
#include "utilities/containers/StringList.h"
#include "utilities/system/FileFunctions.h"
#include "utilities/system/Lock.h"
#include "utilities/system/Observable.h"
#include "utilities/system/ReadWriteLock.h"
#include "utilities/system/RefObject.h"
#include "utilities/system/SlipLock.h"
#include "utilities/text/COMString.h"
#include "utilities/text/DelimitedTextFile.h"
#include "utilities/text/IniFileReader.h"
#include "utilities/text/IniSection.h"
#include "utilities/text/IniValue.h"
#include "utilities/text/LanguageStrings.h"
#include "utilities/text/StringFunctions.h"
#include "utilities/undo/UndoMgr.h"

#endif
