# Compiles a FlatBuffers schema into a header that is included by the schema's own path:
# roamscan/room/Name.fbs becomes <roamscan/room/Name_generated.h>.

find_program(ROAMSCAN_FLATC flatc REQUIRED)
set(ROAMSCAN_GENERATED_DIR "${PROJECT_BINARY_DIR}/generated")

# roamscan_schema(target schema.fbs): generates the header and makes `target` depend on it. The header is included as
# a system header: its warnings are not ours.
function(roamscan_schema target schema)
    cmake_path(ABSOLUTE_PATH schema OUTPUT_VARIABLE schemaPath)
    cmake_path(RELATIVE_PATH schemaPath BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE relative)
    cmake_path(GET relative PARENT_PATH folder)
    cmake_path(GET relative STEM name)
    set(header "${ROAMSCAN_GENERATED_DIR}/${folder}/${name}_generated.h")
    add_custom_command(
        OUTPUT "${header}"
        COMMAND "${ROAMSCAN_FLATC}" --cpp --cpp-std c++17 --scoped-enums --no-warnings -o
                "${ROAMSCAN_GENERATED_DIR}/${folder}" "${schemaPath}"
        DEPENDS "${schemaPath}"
        COMMENT "Compiling ${relative}"
        VERBATIM)
    target_sources(${target} PRIVATE "${header}")
    target_include_directories(${target} SYSTEM PRIVATE "${ROAMSCAN_GENERATED_DIR}")
endfunction()
