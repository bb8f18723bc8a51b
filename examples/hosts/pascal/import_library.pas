{ Writes the Free Pascal unit of a type library into the current folder: import_library FILE.dll }
program import_library;

{$mode delphi}
{$apptype console}

uses SysUtils, Classes, ActiveX, TypeLib;

var
  Needed, Source: TStringList;
  UnitName, PackageSource, RegistrationSource: string;
begin
  CoInitialize(nil);
  Needed := TStringList.Create;
  Source := TStringList.Create;
  Source.Text := ImportTypelib(WideString(ParamStr(1)), UnitName, Needed, False, False, False, PackageSource,
    RegistrationSource);
  Source.SaveToFile(UnitName + '.pas');
  Source.Free;
  Needed.Free;
end.
