Attribute VB_Name = "Host"
' A user form of 64-bit Office that shows a package. Not tried yet.
' 1. Register the control: regsvr32 MXOVDocViewCtrl.ocx, as an administrator.
' 2. Insert a user form named PackageForm, and on it, from Additional Controls, "MXOVDocView Control", named Documents.
' 3. Import this module and run ShowPackage.
Option Explicit

Public Sub ShowPackage()
    Dim folder As String
    folder = InputBox("Folder of the unpacked package:")
    If folder = "" Then Exit Sub
    If Right$(folder, 1) <> "\" Then folder = folder & "\"
    PackageForm.Documents.LoadFile folder, InputBox("Package file that saving replaces:")
    ' In pixels; a form has points, of which 72 are an inch.
    PackageForm.Documents.OnSizeChange PackageForm.InsideWidth * 96 / 72, PackageForm.InsideHeight * 96 / 72
    PackageForm.Show
    PackageForm.Documents.Close
End Sub
