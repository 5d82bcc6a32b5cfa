' The devkit's components as a script client meets them. Ends with status 1 when something is not as expected.
Option Explicit
Dim failures, fso, path, db, records, list, text, seen
failures = 0

Sub Expect(what, got, expected)
  If got <> expected Then
    WScript.Echo what & ": got '" & got & "', expected '" & expected & "'"
    failures = failures + 1
  End If
End Sub

Set fso = CreateObject("Scripting.FileSystemObject")
path = fso.BuildPath(fso.GetSpecialFolder(2), fso.GetTempName)

Set db = CreateObject("V5DBIL.DatabaseInterface")
Expect "name", db.SetApplicationName("Script"), True
Expect "initialise", db.Initialise("S1", "EN", "Data Source=" & path & ";User ID=jsmith", "", "", "", "", False, 0), True
Expect "open", db.OpenSite("S1", -1, -1, -1, 0, 0, 0), True
Expect "write", db.WriteLookup("S1", 1, "V5LOOKUP", "{K}", "it's ""quoted"""), True
Expect "read", db.ReadLookup("S1", 1, "V5LOOKUP", "{K}"), "it's ""quoted"""
Expect "no record", IsEmpty(db.ReadEventLog("S1")), True
Expect "log", db.WriteEventLog("S1", #2014-03-05 14:07:09#, "changed", "SECURITY", 1, "", "STR-0139"), True
records = db.ReadEventLog("S1")
Expect "records", UBound(records, 1), 0
Expect "time", records(0, 1), #2014-03-05 14:07:09#
Expect "tag", records(0, 6), "STR-0139"
Expect "user", db.SiteInfo("S1").CurrentUserName, "jsmith"

On Error Resume Next
db.ReadLookup "S2", 1, "V5LOOKUP", "{K}"
Expect "error", Err.Description, "DBIL: cannot read a lookup row: site 'S2' is not initialised"
On Error GoTo 0
db.Close
fso.DeleteFile path

Set list = CreateObject("V5Msgs.MessageList")
list.RaiseMsg 4, "first"
list.RaiseMsg 4, "second"
For Each text In list
  seen = seen & text & ";"
Next
Expect "for each", seen, "first;second;"
Expect "default member", list(1), "second"

Expect "user is somebody", CreateObject("V5NetUtil.AccountInfo").GetCurrentUserName <> "", True
If failures > 0 Then WScript.Quit 1
WScript.Echo "passed"
