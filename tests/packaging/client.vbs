' Uses every class and says "passed" when all of them answer.
Option Explicit
Dim name, object
For Each name In Array("NimboStringsMain", "LogFileClass", "NimboErrorNumbers", "DahsIniMain", "DahsIniEntries", _
                       "DahsIniEntry", "NimboSecurity", "NimboHelp", "FootnoteList", "Footnote")
    Set object = CreateObject("V5Strings." & name)
Next
Set object = CreateObject("V5Strings.FootnoteList")
object.CreateOrGetFootnote Nothing, "Substituted value"
If object.Count = 1 Then WScript.Echo "passed"
