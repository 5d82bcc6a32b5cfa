' Walks through the dialogs that all programs of the product share and tells what each one answered.
'
'   cscript //nologo dialogs.vbs
'
' The DAHS chooser needs a site file: set VANTOR5_SYSTEM_FOLDER to the folder of a Vantor5.INI first.
Option Explicit
Const ICON_QUESTION = 32, ICON_INFORMATION = 64
Const BUTTONS_OK = 0, BUTTONS_YES_NO = 4, SECOND_IS_DEFAULT = 256
Const ANSWER_YES = 6
Const TITLE = "Dialogs of Vantor 5"

Dim vantor: Set vantor = CreateObject("V5Strings.NimboStringsMain")

' A box that need not wait for anybody: after ten seconds it answers No by itself.
If vantor.AsyncMsgBox("Do you want to see the dialogs?" & vbCrLf & "Without an answer in ten seconds, no.", _
                      BUTTONS_YES_NO + ICON_QUESTION + SECOND_IS_DEFAULT, TITLE, 0, True, 10) <> ANSWER_YES Then
  WScript.Echo "Nobody wants to see them."
  WScript.Quit
End If

' The present date and time at first; the user may also say that there is no date.
Dim answer: answer = vantor.GetDateFromUser("When did the outage end?", 0, False, True, False)
Select Case CDbl(answer)
  Case 0: WScript.Echo "Date: cancelled"
  Case -1: WScript.Echo "Date: none, the outage goes on"
  Case Else: WScript.Echo "Date: " & FormatDateTime(answer, vbGeneralDate)
End Select

' A date without a time of day.
answer = vantor.GetDateFromUser("First CEMS date", DateSerial(2024, 12, 20), True)
If CDbl(answer) <> 0 Then WScript.Echo "First CEMS date: " & FormatDateTime(answer, vbLongDate)

Dim cancelled: cancelled = False
answer = vantor.GetTimeFromUser("Time of the daily calibration", TimeSerial(13, 30, 0), cancelled)
If cancelled Then
  WScript.Echo "Time: cancelled"
Else
  WScript.Echo "Time: " & FormatDateTime(answer, vbShortTime)
End If

Dim dahsID: dahsID = 0
If vantor.GetDahsIDFromUser(0, dahsID) Then
  WScript.Echo "DAHS: " & dahsID
Else
  WScript.Echo "DAHS: none chosen"
End If

vantor.ShowVantorAboutBox Nothing, TITLE
vantor.ShowVantorSupportInfo Nothing
vantor.AsyncMsgBox "That was all.", BUTTONS_OK + ICON_INFORMATION, TITLE
