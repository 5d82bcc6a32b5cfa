' Shows the site as every program of the product sees it: which DAHS there are, and the settings, folders and
' connection strings of one of them.
'
'   cscript //nologo show_site.vbs [number of the DAHS]
'
' The findings that were made while reading (DahsIniMain.Problems) are an array of texts, which script engines cannot
' look into: "v5site check" prints them, and so can VBA, C++, .NET and PowerShell.
Option Explicit
Const NotApplicable = 0  ' no processor affinity
Dim ini, entry, place

' Text in a column of a fixed width.
Function Column(text, width)
    Column = text
    If Len(text) < width Then Column = text & Space(width - Len(text))
    Column = Column & " "
End Function

Sub Show(name, value)
    WScript.Echo "  " & Column(name, 18) & value
End Sub

' A connection string without its password, for other people's eyes.
Function Masked(ByVal connection)
    Dim pattern
    Set pattern = New RegExp
    pattern.Pattern = "(password|pwd)(\s*=\s*)(""[^""]*""|'[^']*'|[^;]*)"
    pattern.IgnoreCase = True
    pattern.Global = True
    Masked = pattern.Replace(connection, "$1$2***")
End Function

Set ini = CreateObject("V5Strings.DahsIniMain")
If Not ini.ReadVantorINI(NotApplicable) Then
    WScript.Echo "There is no usable site file; v5site check tells why."
    WScript.Quit 2
End If

WScript.Echo ini.DahsEntries.Count & " DAHS in " & ini.ActualVantorINI
For Each entry In ini.DahsEntries
    place = "here"
    If entry.IsRemote Then place = "elsewhere"
    WScript.Echo "  " & Column(entry.DahsID, 3) & Column(entry.SiteID, 11) & Column(entry.DahsComputerName, 16) & _
        Column(place, 10) & entry.DahsDescription
Next

If WScript.Arguments.Count > 0 Then
    If Not ini.ChooseDahs(WScript.Arguments(0)) Then
        WScript.Echo "There is no DAHS " & WScript.Arguments(0) & "."
        WScript.Quit 2
    End If
End If

WScript.Echo ""
WScript.Echo "DAHS " & ini.DahsID
Show "Site", ini.SiteID
Show "Role", ini.RedundantDasRoleText
Show "Automatic output", ini.AutoOutputEnabled
Show "Folder", ini.VantorDir
Show "Logs", ini.VantorLogsDir
Show "Backup", ini.PrimaryBackupDir
Show "Data", Masked(ini.SqlConnectionString_Data)
Show "Ostra", Masked(ini.SqlConnectionString_Ostra)
Dim primary, secondary
ini.FindRedundantDasIDs ini.SiteID, 0, primary, secondary
Show "Primary DAS", primary
Show "Secondary DAS", secondary
