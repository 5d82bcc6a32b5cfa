// Prints the entries of the site file and what is wrong in it, late-bound, so that no wrapper need be made. Compiled here
// with Mono's compiler, and not tried on a Windows of our own yet.
//
//   csc ShowSite.cs && ShowSite
using System;

public static class ShowSite
{
    [STAThread]  // the objects of the library belong to a single-threaded apartment
    public static int Main()
    {
        dynamic site = Activator.CreateInstance(Type.GetTypeFromProgID("V5Strings.DahsIniMain", true));
        bool usable = site.ReadVantorINI(0);
        string[] problems = site.Problems as string[];
        foreach (string problem in problems ?? new string[0])
        {
            Console.WriteLine(problem);
        }
        foreach (dynamic entry in site.DahsEntries)
        {
            Console.WriteLine("DAHS {0}: site {1}, computer {2}", entry.DahsID, entry.SiteID, entry.DahsComputerName);
        }
        return usable ? 0 : 1;
    }
}
