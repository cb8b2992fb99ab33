{ Automation from Free Pascal for 64-bit Windows, with the control registered. Tested under Wine.
    fpc -Twin64 host.pas
    host FOLDER
  A program without a window has no lists; Lazarus embeds the control through its ActiveX container. }
program Host;

{$mode objfpc}{$H+}

uses
  ActiveX, ComObj, SysUtils, Variants;

var
  Control: OleVariant;
  Folder: WideString;
begin
  if ParamCount <> 1 then
    Halt(2);
  OleInitialize(nil);
  Folder := WideString(IncludeTrailingPathDelimiter(ParamStr(1)));
  Control := CreateOleObject('MXOVTREETAB.MXOVDocViewCtrlVS2015.13');
  Control.LoadFile(Folder, WideString(''));
  Control.InputParameter := Folder;
  WriteLn(Control.InputParameter);
  Control.Close;
  Control := Unassigned;
  OleUninitialize;
end.
