#include "utilities/base/ListTooLong.h"

#include <stdexcept>

void vtr::ThrowListTooLong() {
    throw std::length_error("list too long");
}
