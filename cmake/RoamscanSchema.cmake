# Compiles a FlatBuffers schema into a header that is included by the schema's own path:
# roamscan/room/Name.fbs becomes <roamscan/room/Name_generated.h>.

find_program(ROAMSCAN_FLATC flatc REQUIRED)
set(ROAMSCAN_GENERATED_DIR "${PROJECT_BINARY_DIR}/generated")

# roamscan_schema(target schema.fbs [OBJECT_API]): generates the header and makes `target` depend on it. The header is
# included as a system header: its warnings are not ours. With OBJECT_API it also has the tree of objects that the library
# does without; that one lies in a folder of its own.
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
    target_include_directories(${target} SYSTEM PRIVATE "${includeDir}")
endfunction()
