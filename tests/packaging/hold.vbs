' Holds the library while the file that is named exists; then uses it and prints 1.
Dim list, files
Set list = CreateObject("V5Strings.FootnoteList")
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateTextFile(WScript.Arguments(0)).Close
' Not every script host can sleep.
Do While files.FileExists(WScript.Arguments(0))
Loop
list.CreateOrGetFootnote Nothing, "Substituted value"
WScript.Echo list.Count
