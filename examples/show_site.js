// The sites of the site file and the DAHS that serves each, in JScript.
//
//   cscript //nologo show_site.js
var NotApplicable = 0; // no processor affinity

var ini = new ActiveXObject("V5Strings.DahsIniMain");
if (!ini.ReadVantorINI(NotApplicable)) {
    WScript.Echo("There is no usable site file; v5site check tells why.");
    WScript.Quit(2);
}

var seen = {};
for (var entries = new Enumerator(ini.DahsEntries); !entries.atEnd(); entries.moveNext()) {
    var site = entries.item().SiteID;
    if (!seen[site]) {
        seen[site] = true;
        var dahs = ini.DahsEntries.Item(ini.GetDahsIDForSiteID(site));
        WScript.Echo(site + ": DAHS " + dahs.DahsID + " on " + dahs.DahsComputerName);
    }
}
