# Results are the same bits on every platform because every expression is evaluated as it is written: in single
# precision, without fused steps and without reordering. Compilers contract a * b + c to one rounding where the
# processor can (gcc does so by default), so it is turned off here, for everything that is built; a test fails when a
# compiler contracts all the same.
if(MSVC)
    add_compile_options(/fp:precise)
else()
    add_compile_options(-ffp-contract=off)
endif()
