' Ten odd site files, read as a script reads them. VANTOR5_SYSTEM_FOLDER names an existing folder to put them in: Wine's
' script host cannot set variables.
Option Explicit
Dim files, shell, folder, path, ini, local, sound, all, entry, number

Sub Expect(what, actual, expected)
    If CStr(actual) <> CStr(expected) Then
        WScript.Echo what & ": '" & actual & "' instead of '" & expected & "'"
        WScript.Quit 1
    End If
End Sub

' Writes the site file: ANSI, or UTF-16 with its mark.
Sub WriteSite(text, asUnicode)
    Dim file
    Set file = files.CreateTextFile(path, True, asUnicode)
    file.Write text
    file.Close
End Sub

' Reads a site file with a new object and gives what reading returned.
Function Reads(text)
    WriteSite text, False
    Set ini = CreateObject("V5Strings.DahsIniMain")
    Reads = ini.ReadVantorINI(0)
End Function

Function Section(number, lines)
    Section = "[Dahs" & number & "]" & vbCrLf & lines & vbCrLf & sound
End Function

Set files = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
local = CreateObject("V5Strings.DahsIniMain").LocalComputerName
folder = Replace(shell.ExpandEnvironmentStrings("%VANTOR5_SYSTEM_FOLDER%"), Chr(0), "")  ' Wine leaves a final NUL
path = folder & "\Vantor5.INI"
sound = "SiteID=ab" & vbCrLf & "DahsComputerName=" & local & vbCrLf & "VantorDir=" & folder & "\V\" & vbCrLf & _
    "BackupDir=b\" & vbCrLf & "SQLAlarms=Provider=p;Server=a;DataTypeCompatibility=80" & vbCrLf & "SQLConfig=c" & vbCrLf & _
    "SQLData=Database=Vantor5Data;x=VANTOR5DATA" & vbCrLf & "SQLDataShortTerm=s" & vbCrLf & "SQLRealtime=r" & vbCrLf

' 1. Nothing but noise.
Expect "noise", Reads("]]][[[" & vbLf & "=" & vbLf & "[Dahs1" & vbLf & "SiteID=ab" & vbCr), False
Expect "noise: count", ini.DahsEntries.Count, 0
Expect "noise: several", ini.AreMultipleDahsDefined, False
Expect "noise: problems", VarType(ini.Problems), vbArray + vbString

' 2. Numbers with holes, out of order, and one too many.
Expect "holes", Reads(Section(100, "") & Section(7, "") & Section(2, "")), True
Expect "holes: first", ini.DahsID, 2
Expect "holes: count", ini.DahsEntries.Count, 2
Expect "holes: by position", ini.DahsEntries.Item(2, False).DahsID, 7
Expect "holes: from zero", ini.DahsEntries.Item0(0).DahsID, 2
For Each entry In ini.DahsEntries
    all = all & entry.DahsID & ","
Next
Expect "holes: for each", all, "2,7,"
On Error Resume Next
ini.DahsEntries.Item 1
number = Err.Number
On Error GoTo 0
Expect "holes: no such key", number, 5
On Error Resume Next
ini.DahsEntries.Item0 2
number = Err.Number
On Error GoTo 0
Expect "holes: no such position", number, 9

' 3. A site identifier that is a number: hexadecimal, currency, exponent.
For Each number In Array("123", "&HFF", "$1", "1E3", "1,000")
    Expect "number " & number, Reads(Section(1, "SiteID=" & number)), False
Next
Expect "no number", Reads(Section(1, "SiteID=12a")), True
Expect "no number: upper case", ini.SiteID, "12A"

' 4. Case, quotes, comments, repeated keys and sections.
Expect "doubles", Reads("[dAhS1]" & vbLf & ";SiteID=x" & vbLf & " sItEiD = ' first ' " & vbLf & "LANGUAGEID=""de""" & vbLf & _
    sound & Section(1, "SiteID=second")), True
Expect "doubles: first wins", ini.SiteID, "FIRST"
Expect "doubles: quotes", ini.LanguageID, "de"

' 5. Words for switches, the known misspelling among them.
Expect "words", Reads(Section(1, "HDR=fasle" & vbCrLf & "TraceEnabled=off" & vbCrLf & "LogFlushEnabled=0" & vbCrLf & _
    "RedundantDasSyncStagingEnabled=yes" & vbCrLf & "RedundantDasSyncCompareEnabled=on")), True
Expect "words: HDR", ini.HDREnabled, False
Expect "words: trace", ini.ExtraTraceMsgsEnabled, True
Expect "words: flush", ini.LogFlushEnabled, False
Expect "words: staging", ini.RedundantDasSyncStagingEnabled, True
Expect "words: compare", ini.RedundantDasSyncCompareEnabled, False

' 6. Automatic output: "1,30" is a number with a thousands separator.
Expect "output", Reads(Section(1, "AutoOutputEnabled=1,30") & Section(2, "AutoOutputEnabled=auto_secondary,30") & _
    Section(3, "AutoOutputEnabled=yes,-5") & Section(4, "AutoOutputEnabled=maybe") & _
    Section(5, "AutoOutputEnabled=Auto-Dahs-ID,2.5")), True
all = ""
For Each entry In ini.DahsEntries
    all = all & entry.AutoOutputEnabledEx & "/" & entry.AutoOutputEnabledExRedundantDasTimeout & " "
Next
Expect "output: settings", all, "1/60 3/30 1/0 -1/60 4/2 "

' 7. A redundant pair, and roles that contradict the output.
Expect "pair", Reads(Section(1, "RedundantDasRole=pri-mary" & vbCrLf & "DahsComputerName=elsewhere") & _
    Section(2, "RedundantDasRole=Secondary") & _
    Section(3, "SiteID=cd" & vbCrLf & "RedundantDasRole=PRIMARY" & vbCrLf & "AutoOutputEnabled=AUTOSECONDARY")), True
Expect "pair: remote", ini.SelectedDahsIsRemote, True
Expect "pair: role", ini.RedundantDasRoleText, "Primary"
Expect "pair: contradiction", ini.DahsEntries.Item(3).RedundantDasRole, 0
Expect "pair: not secondary", ini.DahsEntries.CountOfNonSecondaryDahsEntries, 2
Dim primary, secondary
ini.FindRedundantDasIDs "", 2, primary, secondary
Expect "pair: ids", primary & "," & secondary, "1,2"
Expect "pair: here", ini.GetDahsIDForComputerName("any", False) & ini.GetDahsIDForComputerName("any", True), "21"
Expect "pair: site", ini.GetDahsIDForSiteID("Cd"), 3

' 8. Connection strings: derived, converted, and missing.
Expect "connections", Reads(Section(1, "ReportsURL=http://r") & Section(2, "SQLRealtime=")), True
Expect "connections: dropped", ini.DahsEntries.Count, 1
Expect "connections: Ostra", ini.SqlConnectionString_Ostra, "Database=Vantor5Ostra;x=VANTOR5DATA"
Expect "connections: reports", ini.MustUseReportsURL, False
Expect "connections: .NET", ini.ChooseDahs3(1, True, True), True
Expect "connections: converted", ini.SqlConnectionString_Alarms, "Server=a;"
Set ini = CreateObject("V5Strings.DahsIniMain")
Expect "connections: allowed", ini.ReadVantorINI4(0, False, False, 1), True
Expect "connections: kept", ini.DahsEntries.Count, 2

' 9. UTF-16 with its mark.
WriteSite Section(1, "DahsDescription=Gr" & Chr(252) & Chr(128)), True
Set ini = CreateObject("V5Strings.DahsIniMain")
Expect "unicode", ini.ReadVantorINI(0), True
Expect "unicode: text", ini.DahsDescription, "Gr" & Chr(252) & Chr(128)

' 10. Folders, long identifiers and a second reading.
Expect "folders", Reads(Section(1, "SiteID=abcdefghijkl") & Section(2, "SiteID=abcdefghij")), True
Expect "folders: stripped", ini.VantorDir, folder & "\V"
Expect "folders: backup", ini.PrimaryBackupDir, "b"
Expect "folders: made", files.FolderExists(folder & "\V\SecondaryBackup"), True
Expect "folders: logs", ini.VantorLogsDir, folder & "\V\\Logs"
Expect "folders: choose", ini.ChooseDahs4("abcdefghijkl", False, False), True
Expect "folders: chosen", ini.DahsID, 2
Expect "folders: again", ini.ReadVantorINI(0), False
Expect "folders: kept", ini.DahsID, 2

files.DeleteFile path
files.DeleteFolder folder & "\V", True
WScript.Echo "passed"
