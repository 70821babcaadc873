# The parts of the host's page stand as files of their own languages; they become texts of the
# program, in a header that is made anew when one of them changes.
function(kestrel_html_sources folder template header)
  foreach(part IN ITEMS page.html result.html style.css filter.js)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${folder}/${part})
  endforeach()
  file(READ ${folder}/page.html page)
  file(READ ${folder}/result.html result)
  file(READ ${folder}/style.css style)
  file(READ ${folder}/filter.js script)
  configure_file(${template} ${header} @ONLY)
endfunction()
