# Adds what a Debian package has besides the installed files: its copyright and changelog. Compresses the manual page, and
# removes run paths, which the system's folders do not need. CPack runs this between installing and packaging.

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(maintainer "${CPACK_PACKAGE_CONTACT}")
set(work "${CPACK_TEMPORARY_DIRECTORY}/../debian-files")
file(WRITE "${work}/changelog"
     "${CPACK_DEBIAN_PACKAGE_SOURCE} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
     "  * Version ${CPACK_PACKAGE_VERSION}.\n\n -- ${maintainer}  ${date}\n")
file(READ "${CPACK_ROAMSCAN_SOURCE_DIR}/LICENSE" license)
string(REGEX MATCH "Copyright [^\n]*" copyright "${license}")
string(REGEX REPLACE "^.*${copyright}\n\n" "" license "${license}")
string(REGEX REPLACE "\n(\n*)$" "" license "\n${license}")
string(REPLACE "\n\n" "\n.\n" license "${license}")
string(REPLACE "\n" "\n " license "${license}")
string(REGEX REPLACE "^Copyright \\(c\\) " "" copyright "${copyright}")
file(WRITE "${work}/copyright"
     "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n"
     "Upstream-Name: RoamscanDataStructures\nUpstream-Contact: ${maintainer}\n\n"
     "Files: *\nCopyright: ${copyright}\nLicense: Expat\n\nLicense: Expat${license}\n")

# compress(file): replaces a file by its compressed form, which does not depend on the time.
function(compress file)
    execute_process(COMMAND gzip -9nf "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}")
    string(TOUPPER "${component}" upperCase)
    set(doc "${root}/usr/share/doc/${CPACK_DEBIAN_${upperCase}_PACKAGE_NAME}")
    file(COPY "${work}/copyright" "${work}/changelog" DESTINATION "${doc}"
         FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    compress("${doc}/changelog")
    file(GLOB_RECURSE files LIST_DIRECTORIES FALSE "${root}/usr/*")
    foreach(file IN LISTS files)
        if(file MATCHES "/man1/.*[.]1$")
            compress("${file}")
        elseif(file MATCHES "/bin/|[.]so[.][0-9.]+$" AND NOT IS_SYMLINK "${file}")
            file(RPATH_REMOVE FILE "${file}")
        endif()
    endforeach()
endforeach()
