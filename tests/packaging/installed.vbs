' Prints the installed versions of V5Strings, a line each: installed.vbs UPGRADECODE...
Option Explicit
Dim installer, i, product
Set installer = CreateObject("WindowsInstaller.Installer")
For i = 0 To WScript.Arguments.Count - 1
    For Each product In installer.RelatedProducts(WScript.Arguments(i))
        WScript.Echo installer.ProductInfo(product, "InstalledProductName")
    Next
Next
