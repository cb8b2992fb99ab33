' Automation from VBScript, with the control registered: cscript host.vbs FOLDER\
Option Explicit
Dim control
Set control = CreateObject("MXOVTREETAB.MXOVDocViewCtrlVS2015.13")
control.LoadFile WScript.Arguments(0), ""
control.InputParameter = WScript.Arguments(0)
WScript.Echo TypeName(control) & ": " & control.InputParameter
control.ClearAllData
control.Close
