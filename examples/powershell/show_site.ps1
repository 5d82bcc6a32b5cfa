# Prints the entries of the site file and what is wrong in it. Not tried on a Windows of our own yet.
#
#   powershell -File show_site.ps1
$site = New-Object -ComObject V5Strings.DahsIniMain
if (-not $site.ReadVantorINI(0)) {
    Write-Warning "no DAHS can be used"
}
foreach ($problem in @($site.Problems)) {
    Write-Output $problem
}
foreach ($entry in $site.DahsEntries) {
    Write-Output ("DAHS {0}: site {1}, computer {2}" -f $entry.DahsID, $entry.SiteID, $entry.DahsComputerName)
}
