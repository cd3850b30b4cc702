# vtr_warnings(TARGET...): every warning that finds faults, as an error.
function(vtr_warnings)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:
            -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wcast-qual
            -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual
            -Wduplicated-cond -Wlogical-op -Wundef
            -Wno-restrict>) # false alarms of GCC 12 on std::string
    endforeach()
endfunction()
