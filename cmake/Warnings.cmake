# vtr_warnings(TARGET...): every warning that finds faults, as an error.
function(vtr_warnings)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:
            -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wcast-qual
            -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference
            -Wduplicated-cond -Wlogical-op -Wundef>)
    endforeach()
endfunction()
