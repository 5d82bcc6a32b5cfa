' Shows the dialog of a name (see shots.sh), or tells all names.
'
'   cscript //nologo shots.vbs [NAME FOLDER]
'
' FOLDER takes the database of the password dialog. The chooser needs a site file (VANTOR5_SYSTEM_FOLDER).
Option Explicit
Const TITLE = "Vantor 5"
Const RID_CloseManualConfirmation = 231
Const WARNING = "The calibration cannot be started while the analyzer is purging. Should the program wait for the end of the purge and then start the calibration by itself, or should it be left to the next scheduled time?"

Dim vantor: Set vantor = CreateObject("V5Strings.NimboStringsMain")
Dim number: number = 0
Dim cancelled: cancelled = False
If WScript.Arguments.Count = 0 Then
  WScript.Echo "message-warning message-error message-question message-information message-plain date date-only date-none time dahs password about support"
  WScript.Quit
End If

Select Case WScript.Arguments(0)
  Case "message-warning": vantor.AsyncMsgBox WARNING & vbCrLf & vbCrLf & "Analyzer: SO2 & NOx, stack 2", &H34, TITLE
  Case "message-error": vantor.AsyncMsgBox "The report cannot be printed.", &H12, TITLE
  Case "message-question": vantor.AsyncMsgBox "Save the changes?", &H123, TITLE
  Case "message-information": vantor.AsyncMsgBox "The backup is complete.", &H41, TITLE
  Case "message-plain": vantor.AsyncMsgBox "Done.", 0, TITLE
  ' Today stands out beside the chosen day.
  Case "date": vantor.GetDateFromUser "Start of the report", Date - 8 + TimeSerial(13, 30, 0), False, True, False
  Case "date-only": vantor.GetDateFromUser "First CEMS date", DateSerial(2024, 12, 20), True
  Case "date-none": vantor.GetDateFromUser "End of the outage", -1, False, False, False
  Case "time": vantor.GetTimeFromUser "Time of the daily calibration", TimeSerial(13, 30, 0), cancelled
  Case "dahs": vantor.GetDahsIDFromUser 0, number
  Case "password": AskForPassword
  Case "about": vantor.ShowVantorAboutBox Nothing, "Report Generator"
  Case "support": vantor.ShowVantorSupportInfo Nothing
End Select

Sub AskForPassword()
  Dim security: Set security = CreateObject("V5Strings.NimboSecurity")
  Dim login: login = "Data Source=" & WScript.Arguments(1) & "\shots.db;Integrated Security=SSPI"
  If Not security.Setup("S1", "EN", login, "", "shots", False) Then WScript.Quit 1
  security.EnableSecurity
  security.SetManualAlarmResetPwd "1"
  security.CheckUserPrivilegeLevelEx RID_CloseManualConfirmation, True, "", _
    "Your account may not enter the debug mode of the I/O software. Somebody who may can enter the password here.", _
    "Enter debug mode"
  security.Teardown
End Sub
