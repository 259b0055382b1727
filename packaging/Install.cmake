# Installation and the Debian package.
#
# The program finds zhuyintable, STTABLE, the lexicon and Tokenizer beside its
# own executable, so an installation keeps them all in one folder,
# lib/quillmere, as the build keeps them in out/. The commands on the PATH are
# relative links into that folder, which work under any prefix and resolve
# through /proc/self/exe.

include(GNUInstallDirs)

set(QUILLMERE_INSTALL_DIR lib/quillmere)
set(quillmere_packaging_dir ${PROJECT_SOURCE_DIR}/packaging)
set(quillmere_packaging_out ${PROJECT_BINARY_DIR}/packaging)

# Executables. The window and the tokenizer are optional parts of a build.
set(quillmere_programs quillmere-cli)
set(quillmere_commands quillmere-cli)
if(TARGET quillmere)
  list(APPEND quillmere_programs quillmere)
  list(APPEND quillmere_commands quillmere)
endif()
if(TARGET Tokenizer)
  list(APPEND quillmere_programs Tokenizer)
endif()
install(TARGETS ${quillmere_programs} RUNTIME DESTINATION ${QUILLMERE_INSTALL_DIR})
# A stripped installation (cmake --install --strip, and the package) also
# drops the compilers' version notes, the .comment section, as Debian's own
# packages do.
if(CMAKE_OBJCOPY)
  foreach(program IN LISTS quillmere_programs)
    install(CODE "if(CMAKE_INSTALL_DO_STRIP)
  execute_process(COMMAND \"${CMAKE_OBJCOPY}\" --remove-section=.comment
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${QUILLMERE_INSTALL_DIR}/${program}\"
    COMMAND_ERROR_IS_FATAL ANY)
endif()")
  endforeach()
endif()

# bin/ links, made in the build folder and installed as links.
file(MAKE_DIRECTORY ${quillmere_packaging_out}/bin)
foreach(command IN LISTS quillmere_commands)
  file(CREATE_LINK ../${QUILLMERE_INSTALL_DIR}/${command}
       ${quillmere_packaging_out}/bin/${command} SYMBOLIC)
  install(FILES ${quillmere_packaging_out}/bin/${command}
          DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()

# Data files: the same list that data/ copies into the build's out/ folder.
get_directory_property(quillmere_data_files
  DIRECTORY ${PROJECT_SOURCE_DIR}/data DEFINITION QUILLMERE_DATA_FILES)
foreach(file IN LISTS quillmere_data_files)
  # OPTIONAL: a build without a data file still installs; the program then
  # says that the data file is missing, as it does in the build.
  install(FILES ${QUILLMERE_OUT}/${file}
          DESTINATION ${QUILLMERE_INSTALL_DIR} OPTIONAL)
endforeach()

# Manual pages, compressed as Debian wants them (-n: no time stamp inside).
find_program(QUILLMERE_GZIP gzip REQUIRED)
set(quillmere_manpages quillmere-cli.1)
if(TARGET quillmere)
  list(APPEND quillmere_manpages quillmere.1)
endif()
set(quillmere_packaging_outputs)
foreach(page IN LISTS quillmere_manpages)
  set(source ${quillmere_packaging_dir}/man/${page})
  set(copy ${quillmere_packaging_out}/man/${page})
  set(output ${copy}.gz)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E copy ${source} ${copy}
    COMMAND ${QUILLMERE_GZIP} -9nf ${copy}
    DEPENDS ${source} VERBATIM)
  list(APPEND quillmere_packaging_outputs ${output})
  install(FILES ${output} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

# Copyright and licences of the programs and of every data file, and the
# release history, where Debian keeps them for each package. The changelog is
# compressed like the manual pages.
set(quillmere_doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillmere)
install(FILES ${quillmere_packaging_dir}/copyright DESTINATION ${quillmere_doc_dir})
set(quillmere_changelog ${quillmere_packaging_out}/changelog.gz)
add_custom_command(OUTPUT ${quillmere_changelog}
  COMMAND ${CMAKE_COMMAND} -E copy ${quillmere_packaging_dir}/changelog
          ${quillmere_packaging_out}/changelog
  COMMAND ${QUILLMERE_GZIP} -9nf ${quillmere_packaging_out}/changelog
  DEPENDS ${quillmere_packaging_dir}/changelog VERBATIM)
list(APPEND quillmere_packaging_outputs ${quillmere_changelog})
install(FILES ${quillmere_changelog} DESTINATION ${quillmere_doc_dir})

# Desktop integration, only with the window application.
if(TARGET quillmere)
  install(FILES ${quillmere_packaging_dir}/quillmere.desktop
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
  install(FILES ${quillmere_packaging_dir}/io.github.quillmere.Quillmere.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)

  # The application's own icon once it is drawn, a stand-in until then.
  if(EXISTS ${PROJECT_SOURCE_DIR}/data/icon.svg)
    set(quillmere_icon ${PROJECT_SOURCE_DIR}/data/icon.svg)
  else()
    set(quillmere_icon ${quillmere_packaging_dir}/icon-placeholder.svg)
  endif()
  set(quillmere_hicolor ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor)
  install(FILES ${quillmere_icon} DESTINATION ${quillmere_hicolor}/scalable/apps
          RENAME quillmere.svg)
  find_program(QUILLMERE_RSVG_CONVERT rsvg-convert)
  if(QUILLMERE_RSVG_CONVERT)
    foreach(size 16 22 24 32 48 64 128 256 512)
      set(output ${quillmere_packaging_out}/icons/${size}/quillmere.png)
      add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${quillmere_packaging_out}/icons/${size}
        COMMAND ${QUILLMERE_RSVG_CONVERT} -w ${size} -h ${size} -o ${output} ${quillmere_icon}
        DEPENDS ${quillmere_icon} VERBATIM)
      list(APPEND quillmere_packaging_outputs ${output})
      install(FILES ${output} DESTINATION ${quillmere_hicolor}/${size}x${size}/apps)
    endforeach()
  else()
    message(STATUS "rsvg-convert not found (package librsvg2-bin): "
                   "only the scalable icon is installed")
  endif()
endif()
add_custom_target(quillmere_packaging ALL DEPENDS ${quillmere_packaging_outputs})

# The Debian package: packaging/build-package.sh, which builds with Debian's
# hardening flags (cpack -G DEB in any build folder makes it without them).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillmere)
set(CPACK_PACKAGE_VENDOR Quillmere)
set(CPACK_PACKAGE_CONTACT "Quillmere developers <quillmere@example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://quillmere.example.org/)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "transliterate Chinese text into Pinyin, Zhuyin and Wade-Giles")
# The summary above is the synopsis line; this is the long description.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Quillmere writes Chinese text in five phonetic systems: Hanyu Pinyin,
Zhuyin 1 (Bopomofo), Zhuyin 2 (MPS II), Wade-Giles and Tongyong Pinyin.
Traditional and Simplified characters are both accepted; punctuation, line
ends and other text are kept, and running text can be segmented into words.
.
The package holds the desktop application and quillmere-cli, which does
the same from a terminal or a script and exports plain text or XHTML pages
with ruby phonetic guides.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Qt loads its display plug-ins at run time, which dpkg-shlibdeps can't see.
if(TARGET quillmere)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
endif()
# Without a CJK font the characters of the input show as boxes.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk | fonts-wqy-zenhei")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
include(CPack)

if(QUILLMERE_TESTS)
  add_subdirectory(tests/install)
endif()
