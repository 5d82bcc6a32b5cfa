' Prints the version in a file's resources.
WScript.Echo CreateObject("Scripting.FileSystemObject").GetFileVersion(WScript.Arguments(0))
