# Run by CPack on the tree that it packs: what Debian expects of a package's documents.
file(GLOB trees ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(tree IN LISTS trees)
    get_filename_component(package ${tree} NAME)
    set(documents ${tree}/usr/share/doc/${package})
    file(MAKE_DIRECTORY ${documents})
    file(COPY ${CMAKE_CURRENT_LIST_DIR}/../Desktop/debian/copyright ${CMAKE_CURRENT_LIST_DIR}/../Desktop/debian/changelog
        DESTINATION ${documents} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    file(GLOB pages ${tree}/usr/share/man/man*/*[0-9])
    execute_process(COMMAND gzip --best --no-name ${documents}/changelog ${pages} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
