# cmake -DWIDTH=win64|win32 -DVERSION=5.4.0 -DDEVELOPMENT=0|1 -DFOLDER=… -DOUTPUT=….msi -P Installer.cmake
#
# Makes the installer of one width from a folder with V5Strings.dll, v5site.exe, docs and the generated rows. DEVELOPMENT:
# the programs carry development values, which the product's name tells.
#
# Every version is a product of its own, found by its width's upgrade code, which never changes. Codes that belong to a
# version or a width are made from names, so that the same version always gets the same ones.
set(namespace 35ec6a49-cc2e-4b0e-9b25-64bb47b6d27f)
function(code variable name)
  string(UUID made NAMESPACE ${namespace} NAME "${name}" TYPE SHA1 UPPER)
  set(${variable} "${made}" PARENT_SCOPE)
endfunction()
code(PRODUCT_CODE "product ${WIDTH} ${VERSION}")
code(LIBRARY_CODE "library ${WIDTH}")
code(FOLDER_CODE "folder ${WIDTH}")
code(TOOL_CODE "tool ${WIDTH}")
code(ENTRIES_CODE "entries ${WIDTH}")
code(PATH_CODE "path ${WIDTH}")
code(SYSTEM_FOLDER_CODE "system folder ${WIDTH}")
code(DOCUMENTS_CODE "documents ${WIDTH}")
code(PICTURES_CODE "pictures ${WIDTH}")

if(WIDTH STREQUAL win64)
  set(UPGRADE_CODE F1E30AF2-4BE1-47FD-9A5E-97E9E2E0A5D9)
  set(BITS 64)
  set(WIN64 yes)
  set(PROGRAM_FILES ProgramFiles64Folder)
  set(architecture x64)
else()
  set(UPGRADE_CODE 0B7B86F6-7E53-4F68-A1AE-3F0C8C1D90B7)
  set(BITS 32)
  set(WIN64 no)
  set(PROGRAM_FILES ProgramFilesFolder)
  set(architecture x86)
endif()
set(NAME "V5Strings ${VERSION} (${BITS} bit)")
if(DEVELOPMENT)
  string(REPLACE " bit)" " bit, development values)" NAME "${NAME}")
endif()
# files_in: the files of a folder as elements; the first one is its component's key path
function(files_in variable folder)
  file(GLOB paths RELATIVE "${FOLDER}" "${FOLDER}/${folder}/*.*")
  set(elements)
  set(key " KeyPath=\"yes\"")
  foreach(path IN LISTS paths)
    get_filename_component(name "${path}" NAME)
    string(MAKE_C_IDENTIFIER "${name}" identifier)
    string(APPEND elements "<File Id=\"${identifier}\" Name=\"${name}\" Source=\"${path}\"${key}/>\n")
    set(key)
  endforeach()
  set(${variable} "${elements}" PARENT_SCOPE)
endfunction()
files_in(DOCUMENTS docs)
files_in(PICTURES docs/pictures)
configure_file("${CMAKE_CURRENT_LIST_DIR}/V5Strings.wxs.in" "${FOLDER}/V5Strings.wxs" @ONLY)
configure_file("${CMAKE_CURRENT_LIST_DIR}/Installer.sql" "${FOLDER}/Installer.sql" @ONLY)
# wixl reads files by paths relative to its own folder.
execute_process(COMMAND wixl -a ${architecture} -o "${OUTPUT}" V5Strings.wxs WORKING_DIRECTORY "${FOLDER}"
                COMMAND_ERROR_IS_FATAL ANY)
