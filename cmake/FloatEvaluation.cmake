# Results have the same bits on every platform because every expression is evaluated as it is written: in single
# precision, without fused operations and without reordering. Where the processor has fused operations, compilers round
# a * b + c only once (gcc does so by default). This is turned off for everything that is built here; a test fails if a
# compiler fuses regardless. Headers hold inline arithmetic, so evaluate_as_written() turns it off for users, too.
if(MSVC)
    add_compile_options(/fp:precise)
else()
    add_compile_options(-ffp-contract=off)
endif()

# Adds the options to whatever links the target, in this build or after installation.
function(evaluate_as_written target)
    target_compile_options(${target} INTERFACE
        $<$<COMPILE_LANG_AND_ID:CXX,GNU,Clang,AppleClang>:-ffp-contract=off>
        $<$<COMPILE_LANG_AND_ID:CXX,MSVC>:/fp:precise>)
endfunction()
