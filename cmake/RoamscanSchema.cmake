# Compiles a FlatBuffers schema to a header with the same path: roamscan/folder/Name.fbs becomes
# <roamscan/folder/Name_generated.h>.

find_program(ROAMSCAN_FLATC flatc REQUIRED)
set(ROAMSCAN_GENERATED_DIR "${PROJECT_BINARY_DIR}/generated")

# roamscan_schema(target schema.fbs [OBJECT_API]): generates the header and makes `target` depend on it. The header is
# included as a system header, without warnings. With OBJECT_API it also has FlatBuffers' object API, which the library
# does not use; that header is in a separate folder.
function(roamscan_schema target schema)
    cmake_parse_arguments(PARSE_ARGV 2 arg "OBJECT_API" "" "")
    set(includeDir "${ROAMSCAN_GENERATED_DIR}")
    set(options "")
    if(arg_OBJECT_API)
        string(APPEND includeDir "/object-api")
        set(options --gen-object-api)
    endif()
    cmake_path(ABSOLUTE_PATH schema NORMALIZE OUTPUT_VARIABLE schemaPath)
    cmake_path(RELATIVE_PATH schemaPath BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE relative)
    cmake_path(GET relative PARENT_PATH folder)
    cmake_path(GET relative STEM name)
    set(header "${includeDir}/${folder}/${name}_generated.h")
    add_custom_command(
        OUTPUT "${header}"
        COMMAND "${ROAMSCAN_FLATC}" --cpp --cpp-std c++17 --scoped-enums --no-warnings ${options} -o "${includeDir}/${folder}"
                "${schemaPath}"
        DEPENDS "${schemaPath}"
        COMMENT "Compiling ${relative}"
        VERBATIM)
    target_sources(${target} PRIVATE "${header}")
    # With a target of its own, the header is generated without building the libraries that `target` links.
    string(MAKE_C_IDENTIFIER "schema_${target}_${relative}" schemaTarget)
    add_custom_target(${schemaTarget} DEPENDS "${header}")
    add_dependencies(${target} ${schemaTarget})
    target_include_directories(${target} SYSTEM PRIVATE "${includeDir}")
endfunction()
