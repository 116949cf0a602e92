# How every target of this project is compiled.

# roamscan_build_settings(target): the settings that results and layouts depend on, and the warnings. Consumers do not
# inherit them.
function(roamscan_build_settings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON)
    if(WIN32)
        # A DLL exports the inline members of exported classes too: plug-ins do not make those of a template's instance.
        set_target_properties(${target} PROPERTIES VISIBILITY_INLINES_HIDDEN OFF)
        # <windows.h> without the macros min and max, and without what is rarely used. _WIN32_WINNT is Windows 10.
        target_compile_definitions(${target} PRIVATE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(
            ${target}
            PRIVATE -Wall
                    -Wextra
                    -Wpedantic
                    -Wconversion
                    -Wshadow
                    # No fused multiply-add: results are the same to the last bit on every machine.
                    -ffp-contract=off
                    # Lets the compiler inline calls to exported functions within the library.
                    -fno-semantic-interposition)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # A library with unique symbols (STB_GNU_UNIQUE) could not be unloaded.
            target_compile_options(${target} PRIVATE -fno-gnu-unique)
            if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
                # False positives for sums of strings when the compiler optimizes.
                target_compile_options(${target} PRIVATE -Wno-restrict)
            endif()
            if(CMAKE_UNITY_BUILD)
                # In a source that a unity build includes, GCC warns of each class over one of an unnamed namespace, and it
                # warns of a class's own operators new and delete if it inlines one of them.
                target_compile_options(${target} PRIVATE -Wno-subobject-linkage -Wno-mismatched-new-delete)
            endif()
            if(ROAMSCAN_SANITIZE)
                # With sanitizers, GCC reports false positives of this warning, for example in <regex>. The builds
                # without sanitizers keep it.
                target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
            endif()
        endif()
        if(ROAMSCAN_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8 /Zc:__cplusplus /bigobj /fp:precise)
    endif()
    if(ROAMSCAN_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${ROAMSCAN_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${ROAMSCAN_SANITIZE})
    endif()
endfunction()
