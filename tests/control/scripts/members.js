// The same through the other script engine, which asks for members by name and case.
var folder = WScript.Arguments(0);
var control = new ActiveXObject("MXOVTREETAB.MXOVDocViewCtrlVS2015.13");
control.InputParameter = folder;
WScript.Echo("InputParameter: " + (control.InputParameter === folder));
control.OnSizeChange(300, 400);
control.LoadFile(folder, "");
control.LoadFile("Q:\\nowhere\\", "");
control.ClearAllData();
control.Close();
control.AboutBox();
WScript.Echo("called");
try {
    control.LoadFile(folder);
    WScript.Echo("accepted");
} catch (error) {
    WScript.Echo("one argument missing: " + (error.number < 0));
}
WScript.Quit(7);
