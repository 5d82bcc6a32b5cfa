' Uses every class and says "passed" when all of them answer; otherwise, what failed first.
Option Explicit
Dim name, object, count
On Error Resume Next
For Each name In Array("NimboStringsMain", "LogFileClass", "NimboErrorNumbers", "DahsIniMain", "DahsIniEntries", _
                       "DahsIniEntry", "NimboSecurity", "NimboHelp", "FootnoteList", "Footnote")
    Set object = CreateObject("V5Strings." & name)
    Check "create " & name
Next
Set object = CreateObject("V5Strings.FootnoteList")
object.CreateOrGetFootnote Nothing, "Substituted value"
Check "CreateOrGetFootnote"
count = object.Count
Check "Count"
If count = 1 Then WScript.Echo "passed" Else WScript.Echo "Count: " & count

' The script host would end without a word.
Sub Check(what)
    If Err.Number = 0 Then Exit Sub
    WScript.Echo what & ": &H" & Hex(Err.Number) & " " & Err.Description
    WScript.Quit 1
End Sub
