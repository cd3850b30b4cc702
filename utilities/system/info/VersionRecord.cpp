#include "utilities/system/info/VersionRecord.h"

#include <cstring>

namespace vtr {

VersionRecord VersionRecord::Read() {
    OSVERSIONINFOEXA extended{};
    extended.dwOSVersionInfoSize = sizeof extended;
    if (!GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&extended)))
        return ReadBasic();
    VersionRecord record;
    // The extended record begins with the fields of the basic one.
    std::memcpy(&record.basic, &extended, sizeof record.basic);
    record.told = true;
    return record;
}

VersionRecord VersionRecord::ReadBasic() {
    VersionRecord record;
    record.basic.dwOSVersionInfoSize = sizeof record.basic;
    record.told = GetVersionExA(&record.basic) != FALSE;
    return record;
}

} // namespace vtr
