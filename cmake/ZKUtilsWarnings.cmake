# Warning flags shared by the library, its tests, tools and examples.
function(zkutils_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()
