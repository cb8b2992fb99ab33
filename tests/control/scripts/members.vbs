' A script host: no window, no site, no InitNew. Every member is called; the last line tells that all were.
Option Explicit
Dim control, folder
folder = WScript.Arguments(0)
Set control = CreateObject("MXOVTREETAB.MXOVDocViewCtrlVS2015.13")
WScript.Echo "type: " & TypeName(control)
control.InputParameter = folder
' CInt: True is a word of the user's language.
WScript.Echo "InputParameter: " & CInt(control.InputParameter = folder)
control.InputParameter = ""
WScript.Echo "emptied: " & CInt(control.InputParameter = "")
control.OnSizeChange 300, 400
control.OnSizeChange "300", 400.4
control.LoadFile folder, folder & "none.mxov"
control.LoadFile "Q:\nowhere\", ""
control.ClearAllData
control.Close
control.AboutBox
WScript.Echo "called"
On Error Resume Next
control.LoadFile folder
WScript.Echo "one argument missing: " & Hex(Err.Number)
Err.Clear
control.OnSizeChange "wide", 1
WScript.Echo "no number: " & Hex(Err.Number)
Err.Clear
control.Nothing7 1
WScript.Echo "no member: " & Hex(Err.Number)
WScript.Quit 7
