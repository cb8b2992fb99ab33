// A Windows Forms host of the registered control, for 64-bit .NET Framework or .NET with Windows Forms. Compiled, but never run.
//   csc /platform:x64 /target:winexe Host.cs
//   Host.exe FOLDER PACKAGE
using System;
using System.Reflection;
using System.Windows.Forms;

internal sealed class DocumentView : AxHost {
    public DocumentView() : base("6406FF95-0F04-4382-852B-89E0979EAEE8") {}

    public void LoadFile(string folder, string package) {
        Call("LoadFile", folder, package);
    }
    public void OnSizeChange(int width, int height) {
        Call("OnSizeChange", width, height);
    }
    public void ClosePackage() {
        Call("Close");
    }

    private void Call(string member, params object[] arguments) {
        object control = GetOcx();
        control.GetType().InvokeMember(member, BindingFlags.InvokeMethod, null, control, arguments);
    }
}

internal sealed class HostForm : Form {
    private readonly DocumentView view = new DocumentView();

    public HostForm(string folder, string package) {
        Text = package;
        ClientSize = new System.Drawing.Size(420, 600);
        view.Dock = DockStyle.Fill;
        Controls.Add(view);
        Load += delegate { view.LoadFile(folder.TrimEnd('\\') + "\\", package); };
        Resize += delegate { if (IsHandleCreated) view.OnSizeChange(ClientSize.Width, ClientSize.Height); };
        FormClosing += delegate { view.ClosePackage(); };
    }
}

internal static class Program {
    [STAThread]
    private static int Main(string[] words) {
        if (words.Length != 2) return 2;
        Application.EnableVisualStyles();
        Application.Run(new HostForm(words[0], words[1]));
        return 0;
    }
}
