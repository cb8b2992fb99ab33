// Automation from JScript, with the control registered: cscript host.js FOLDER\
// A script has no window and so no lists; it can set and read the control's state, and see that it works.
var control = new ActiveXObject("MXOVTREETAB.MXOVDocViewCtrlVS2015.13");
var folder = WScript.Arguments(0);
control.LoadFile(folder, "");
control.InputParameter = folder;
WScript.Echo("InputParameter: " + control.InputParameter);
control.ClearAllData();
control.Close();
