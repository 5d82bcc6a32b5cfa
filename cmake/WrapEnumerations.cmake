# cmake -DHEADER=<file> -DNAMESPACE=<name> -P WrapEnumerations.cmake
#
# Puts the enumerations of a generated header into a namespace, so that published enumerators with plain names (Unknown,
# Enabled …) do not clash with those of the Windows headers. The enumerations themselves stay known by their bare names.
file(READ "${HEADER}" text)
string(REGEX REPLACE "typedef enum ([A-Za-z0-9_]+) {([^}]*)} [A-Za-z0-9_]+;"
       "#ifdef __cplusplus\nnamespace ${NAMESPACE} {\n#endif\ntypedef enum \\1 {\\2} \\1;\n#ifdef __cplusplus\n}\nusing ${NAMESPACE}::\\1;\n#endif"
       text "${text}")
file(WRITE "${HEADER}" "${text}")
