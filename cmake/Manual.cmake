# The manual page and the completions of shells, which the tool prints from the list of its commands.
add_custom_target(tslbl_manual ALL)

function(tslbl_print_manual format file folder)
  set(printed ${PROJECT_BINARY_DIR}/manual/${format}/${file})
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/manual/${format})
  add_custom_command(OUTPUT ${printed} DEPENDS tslbl_tool VERBATIM
    COMMAND tslbl_tool manual --format ${format} --output ${printed})
  target_sources(tslbl_manual PRIVATE ${printed})
  install(FILES ${printed} DESTINATION ${folder})
endfunction()

tslbl_print_manual(man tslbl.1 ${CMAKE_INSTALL_MANDIR}/man1)
tslbl_print_manual(bash tslbl ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
tslbl_print_manual(zsh _tslbl ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
tslbl_print_manual(fish tslbl.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
