' The user security of a site, from the first start to the audit trail: a fresh site is open to everybody, security is
' switched on, an operation is refused, and the manual alarm-reset password opens another one.
'
'   cscript //nologo security.vbs [database file]
'
' The database must be fresh; without an argument the script makes one in the temporary folder. When the password is
' asked for, type: reset2014
Option Explicit
Const SITE = "BRENN1"
Const RID_EditNewOccurs = 301, RID_CloseManualConfirmation = 231
Const PrivLevel_Master = 56
Const KEY = "m4&Zt!"  ' the scrambler's key of a development build
Dim security, accounts, files, path, login, sid, level1, level2, level3

' The scrambled form in which passwords are stored and compared. Programs scramble before they hand a password on.
Function Scrambled(ByVal typed)
    Dim i, previous, current, digits, result, digit, position
    If Len(typed) < Len(KEY) Then typed = typed & Right(KEY, Len(KEY) - Len(typed))
    typed = Left(typed, 12)
    previous = Asc(typed)
    For i = 2 To Len(typed)
        current = Asc(Mid(typed, i, 1))
        digits = Oct((CLng(previous) * previous) Xor (current * 103))
        If Len(digits) >= 3 Then digits = Right(digits, 1) & Mid(digits, 2, Len(digits) - 2)
        result = result & digits
        previous = current
    Next
    Rnd -CSng(Left(result, 6))  ' the same digits follow from the same text
    Do
        position = CLng(Rnd() * Len(result) + 1)
        digit = "9"
        If Rnd() >= 0.5 Then digit = "8"
        result = Left(result, position - 1) & digit & Mid(result, position)
    Loop While Rnd() < 0.7
    Scrambled = result
End Function

Function YesNo(value)
    YesNo = "no"
    If value Then YesNo = "yes"
End Function

Sub Tell(what, value)
    WScript.Echo "  " & what & Space(46 - Len(what)) & value
End Sub

Function StatusText(status)
    Select Case status
        Case 1: StatusText = "on by default, never configured"
        Case 2: StatusText = "on"
        Case 3: StatusText = "off"
        Case Else: StatusText = "unknown"
    End Select
End Function

Sub ShowAuditTrail()
    Dim database, records, i
    Set database = CreateObject("V5DBIL.DatabaseInterface")
    database.SetApplicationName "security.vbs"
    If database.Initialise(SITE, "EN", login, "", "", "", "", True, 0) Then
        If database.OpenSite(SITE, -1, -1, -1, 0, 0, 0) Then
            records = database.ReadEventLog(SITE)
            For i = 0 To UBound(records, 1)
                WScript.Echo "  " & records(i, 1) & "  " & records(i, 6) & "  " & records(i, 2)
            Next
        End If
    End If
    database.Close
End Sub

Set files = CreateObject("Scripting.FileSystemObject")
If WScript.Arguments.Count > 0 Then
    path = WScript.Arguments(0)
Else
    path = files.GetSpecialFolder(2).Path & "\" & files.GetTempName & ".db"
End If
login = "Data Source=" & path & ";Integrated Security=SSPI"

Set security = CreateObject("V5Strings.NimboSecurity")
If Not security.Setup(SITE, "EN", login, login, "security.vbs", False) Then
    WScript.Echo "Cannot open " & path
    WScript.Quit 1
End If

WScript.Echo "A fresh site"
Tell "Security is", StatusText(security.SecurityEnabledStatus)
Tell "Level of " & security.GetCurrentUserName & ":", security.GetUserPrivilegeLevel
Tell "May edit new occurrences:", YesNo(security.CheckUserPrivilegeLevel(RID_EditNewOccurs, False))

WScript.Echo "The current user goes on the list of level 3, security is switched on"
Set accounts = CreateObject("V5NetUtil.AccountInfo")
sid = accounts.GetCurrentUserSid
If Not security.SetSidsForAllPrivilegeLevels("", "", sid, False) Then WScript.Echo "  The list was not changed"
security.EnableSecurity
security.GetSidsForPrivilegeLevels level1, level2, level3
Tell "Security is", StatusText(security.SecurityEnabledStatus)
Tell "Level 3:", level3
Tell "Level of " & security.GetCurrentUserName & ":", security.GetUserPrivilegeLevel
Tell "Editing new occurrences needs:", security.GetMinPrivilegeLevelForRID(RID_EditNewOccurs)
Tell "May edit new occurrences:", YesNo(security.CheckUserPrivilegeLevel(RID_EditNewOccurs, False))

WScript.Echo "Editing new occurrences is kept for the maker"
If Not security.SetMinPrivilegeLevelForRID(RID_EditNewOccurs, PrivLevel_Master) Then WScript.Echo "  It was not changed"
Tell "May edit new occurrences:", YesNo(security.CheckUserPrivilegeLevel(RID_EditNewOccurs, False))

WScript.Echo "Confirming alarms needs the alarm-reset password, whoever the user is"
If Not security.SetManualAlarmResetPwd(Scrambled("reset2014")) Then WScript.Echo "  It was not stored"
Tell "May confirm without it:", YesNo(security.CheckUserPrivilegeLevel(RID_CloseManualConfirmation, False))
Tell "May confirm with it:", YesNo(security.CheckUserPrivilegeLevelEx(RID_CloseManualConfirmation, True, "", _
    "Enter the manual alarm-reset password:", "Confirm alarms"))

WScript.Echo "The audit trail"
ShowAuditTrail
security.Teardown
