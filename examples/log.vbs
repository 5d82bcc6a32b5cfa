' Writes a log as a program of the product does: a run with a header, lines with both prefixes, a report of a silent
' spell, the end line. Then shows the file.
'
'   cscript //nologo log.vbs [file]
Option Explicit
Dim log, path, line

' Not every script host can sleep.
Sub WaitSeconds(seconds)
    Dim start
    start = Timer
    Do While Timer >= start And Timer < start + seconds
    Loop
End Sub

If WScript.Arguments.Count > 0 Then
    path = WScript.Arguments(0)
Else
    path = CreateObject("Scripting.FileSystemObject").GetSpecialFolder(2).Path & "\v5-example.log"
End If

Set log = CreateObject("V5Strings.LogFileClass")

' Milliseconds and timestamps in front of each line; more than one second without a line is worth a remark.
If Not log.StartLog2(path, "Stack 7 data acquisition", True, True, 1) Then
    WScript.Echo "Cannot open " & path & ": " & log.LogError
    WScript.Quit 1
End If

log.WriteToLog "Analyzer 1: span check passed"
WaitSeconds 2.1
log.WriteToLog2 "Analyzer 1: back after a silent spell", True
log.StopLog

For Each line In Split(CreateObject("Scripting.FileSystemObject").OpenTextFile(log.Filename).ReadAll, vbCrLf)
    WScript.Echo line
Next
