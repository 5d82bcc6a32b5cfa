' Footnotes as a report written in VBScript uses them: marks first, the list of footnotes at the end.
Option Explicit
Dim list, footnote, all, printed, extra, dagger, doubleDagger

Sub Expect(what, actual, expected)
    If actual <> expected Then
        WScript.Echo what & ": " & actual & " instead of " & expected
        WScript.Quit 1
    End If
End Sub

dagger = Chr(134)  ' in the Western code page
doubleDagger = Chr(135)

Set list = CreateObject("V5Strings.FootnoteList")
Expect "first", list.CreateOrGetFootnote(Nothing, "range exceeded"), dagger
Expect "second", list.CreateOrGetFootnote(Nothing, "calibration"), doubleDagger
Expect "again", list.CreateOrGetFootnote(Nothing, "range exceeded"), dagger
Expect "count", list.Count, 2

For Each footnote In list.GetAllFootnotes()
    footnote.Text = UCase(footnote.Text)
    printed = printed & footnote.Symbol & footnote.Text & ";"
Next
Expect "for each", printed, dagger & "RANGE EXCEEDED;" & doubleDagger & "CALIBRATION;"

Set all = list.GetAllFootnotes()
Expect "default member", all(2).Text, "CALIBRATION"
Set extra = CreateObject("V5Strings.Footnote")
extra.Text = "extra"
all.Add extra, "key", 1
Expect "added", all("KEY").Text & all.Count, "extra3"
all.Remove 1
Expect "removed", all.Item(1).Text & all.Count & list.Count, "RANGE EXCEEDED22"
On Error Resume Next
all.Item 3
Expect "error", Err.Number, 9
WScript.Echo "passed"
