# Updates the cache of the loader by a trigger, once for all packages that are installed together. CPack would run ldconfig in
# scripts of each package, which Debian's policy advises against. CPack runs this after packaging.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(folder "${package}.folder")
    file(REMOVE_RECURSE "${folder}")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${folder}" COMMAND_ERROR_IS_FATAL ANY)
    if(EXISTS "${folder}/DEBIAN/postinst")
        file(REMOVE "${folder}/DEBIAN/postinst" "${folder}/DEBIAN/postrm")
        file(WRITE "${folder}/DEBIAN/triggers" "activate-noawait ldconfig\n")
        execute_process(COMMAND dpkg-deb --root-owner-group --build "${folder}" "${package}" COMMAND_ERROR_IS_FATAL ANY
                                                                                             OUTPUT_QUIET)
    endif()
    file(REMOVE_RECURSE "${folder}")
endforeach()
