# How every target of this project is compiled. Call roamscan_build_settings(target) on each.

# The settings that results and layouts depend on, and the warnings. Nothing of it reaches a consumer but the
# alignment of Eigen's types, which is part of the library's binary interface.
function(roamscan_build_settings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(
            ${target}
            PRIVATE -Wall
                    -Wextra
                    -Wpedantic
                    -Wconversion
                    -Wshadow
                    # Products and sums round one by one on every machine, so results are the same to the last bit.
                    -ffp-contract=off
                    # Calls inside the library may be inlined although the symbols are exported.
                    -fno-semantic-interposition)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # Symbols that the loader must keep unique would keep the library loaded for good.
            target_compile_options(${target} PRIVATE -fno-gnu-unique)
            if(ROAMSCAN_SANITIZE)
                # The sanitizers' checks hide from GCC that a variable is set, so this warning is often wrong with them,
                # for example in <regex>. The builds without sanitizers keep it.
                target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
            endif()
        endif()
        if(ROAMSCAN_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
    if(ROAMSCAN_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${ROAMSCAN_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${ROAMSCAN_SANITIZE})
    endif()
endfunction()
