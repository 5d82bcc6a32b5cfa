' The component and the devkit as a script client meets them: For Each, default members, variables for what comes back,
' dates, tables, and errors.
Option Explicit
Dim list, footnote, all, extra, ini, entry, fso, path, db, records, messages, text, seen, primary, secondary

Sub Expect(what, actual, expected)
    If CStr(actual) <> CStr(expected) Then
        WScript.Echo what & ": '" & actual & "' instead of '" & expected & "'"
        WScript.Quit 1
    End If
End Sub

' Footnotes as a report uses them: marks first (these, in the Western code page), the footnotes at the end.
Set list = CreateObject("V5Strings.FootnoteList")
Expect "mark", list.CreateOrGetFootnote(Nothing, "range exceeded"), Chr(134)
Expect "next mark", list.CreateOrGetFootnote(Nothing, "calibration"), Chr(135)
Set all = list.GetAllFootnotes()
For Each footnote In all
    footnote.Text = UCase(footnote.Text)
    seen = seen & footnote.Symbol & footnote.Text & ";"
Next
Expect "for each", seen, Chr(134) & "RANGE EXCEEDED;" & Chr(135) & "CALIBRATION;"
Expect "default member", all(2).Text, "CALIBRATION"
Set extra = CreateObject("V5Strings.Footnote")
extra.Text = "extra"
all.Add extra, "key", 1
Expect "added", all("KEY").Text & all.Count, "extra3"
all.Remove 1
Expect "removed", all.Item(1).Text & all.Count & list.Count, "RANGE EXCEEDED22"

' A site without a file.
Set ini = CreateObject("V5Strings.DahsIniMain")
ini.SetupWithOneForcedDahsEntry "ab"
For Each entry In ini.DahsEntries
    ini.FindRedundantDasIDs "AB", 0, primary, secondary
    Expect "identifiers", entry.DahsID & "," & primary & "," & secondary, "888,888,0"
Next
On Error Resume Next
ini.DahsEntries.Item0 1
Expect "error", Err.Number, 9
On Error GoTo 0

' The devkit.
Set fso = CreateObject("Scripting.FileSystemObject")
path = fso.BuildPath(fso.GetSpecialFolder(2), fso.GetTempName)
Set db = CreateObject("V5DBIL.DatabaseInterface")
Expect "name", db.SetApplicationName("Script"), True
Expect "initialise", db.Initialise("S1", "EN", "Data Source=" & path & ";User ID=jsmith", "", "", "", "", False, 0), True
Expect "open", db.OpenSite("S1", -1, -1, -1, 0, 0, 0), True
Expect "user", db.SiteInfo("S1").CurrentUserName, "jsmith"
Expect "write", db.WriteLookup("S1", 1, "V5LOOKUP", "{K}", "it's ""quoted"""), True
Expect "read", db.ReadLookup("S1", 1, "V5LOOKUP", "{K}"), "it's ""quoted"""
Expect "log", db.WriteEventLog("S1", #2014-03-05 14:07:09#, "changed", "SECURITY", 1, "", "STR-0139"), True
records = db.ReadEventLog("S1")
Expect "record", UBound(records, 1) & records(0, 1) & records(0, 6), "0" & #2014-03-05 14:07:09# & "STR-0139"
On Error Resume Next
db.ReadLookup "S2", 1, "V5LOOKUP", "{K}"
Expect "error's words", Err.Description, "DBIL: cannot read a lookup row: site 'S2' is not initialised"
On Error GoTo 0
db.Close
fso.DeleteFile path

Set messages = CreateObject("V5Msgs.MessageList")
messages.RaiseMsg 4, "first"
messages.RaiseMsg 4, "second"
Expect "default member with an index", messages(1), "second"
Expect "user", CreateObject("V5NetUtil.AccountInfo").GetCurrentUserName <> "", True
WScript.Echo "passed"
