{ Hears of the packets that a store accepted, without an imported type library. }
unit packet_sink;

{$ifdef FPC}{$mode delphi}{$endif}

interface

uses Windows, ActiveX;

type
  TPacketUploaded = procedure(const Packet: WideString; Number: Integer);

  TPacketSink = class(TInterfacedObject, IDispatch)
  private
    FUploaded: TPacketUploaded;
  public
    constructor Create(Uploaded: TPacketUploaded);
    function QueryInterface({$ifdef FPC}constref{$else}const{$endif} Id: TGUID; out Obj): HResult; stdcall;
    function GetTypeInfoCount(out Count: Integer): HResult; stdcall;
    function GetTypeInfo(Index, Locale: Integer; out Info): HResult; stdcall;
    function GetIDsOfNames(const Id: TGUID; Names: Pointer; Count, Locale: Integer; Ids: Pointer): HResult; stdcall;
    function Invoke(Member: Integer; const Id: TGUID; Locale: Integer; Flags: Word; var Params;
      Value, Failure, Faulty: Pointer): HResult; stdcall;
  end;

const
  StoreEvents: TGUID = '{8158E818-FD43-49D3-8D5C-213EDF3629AA}';

implementation

constructor TPacketSink.Create(Uploaded: TPacketUploaded);
begin
  inherited Create;
  FUploaded := Uploaded;
end;

function TPacketSink.QueryInterface({$ifdef FPC}constref{$else}const{$endif} Id: TGUID; out Obj): HResult;
begin
  { The store asks for its events, which come through IDispatch. }
  if IsEqualGUID(Id, StoreEvents) then
    Result := inherited QueryInterface(IDispatch, Obj)
  else
    Result := inherited QueryInterface(Id, Obj);
end;

function TPacketSink.GetTypeInfoCount(out Count: Integer): HResult;
begin
  Count := 0;
  Result := S_OK;
end;

function TPacketSink.GetTypeInfo(Index, Locale: Integer; out Info): HResult;
begin
  Pointer(Info) := nil;
  Result := E_NOTIMPL;
end;

function TPacketSink.GetIDsOfNames(const Id: TGUID; Names: Pointer; Count, Locale: Integer; Ids: Pointer): HResult;
begin
  Result := E_NOTIMPL;
end;

function TPacketSink.Invoke(Member: Integer; const Id: TGUID; Locale: Integer; Flags: Word; var Params;
  Value, Failure, Faulty: Pointer): HResult;
const
  PacketUploaded = 1;
var
  Given: TDispParams absolute Params;
begin
  Result := S_OK;
  { The last argument comes first. }
  if (Member = PacketUploaded) and (Given.cArgs = 2) then
    FUploaded(OleVariant(Given.rgvarg^[1]), OleVariant(Given.rgvarg^[0]));
end;

end.
