{ An early-bound host in Free Pascal, over the unit that is imported from the type library: publishes a small shop, hears
  of each packet, fetches the orders back. }
program early_bound;

{$mode delphi}
{$apptype console}

uses SysUtils, Classes, Variants, ActiveX, ComObj, Quill1XML_1_0_TLB, order_list;

const
  { An early-bound call gives every argument: what AddTax and its like take for not given. }
  None = 'StringDefault';

type
  TPublisher = class
  private
    FEvents: TEvsStore;
    FStore: _Store;
    procedure PacketUploaded(Sender: TObject; Packet: WideString; Number: Integer);
    procedure Publish;
    procedure ShowRefusal;
    procedure ShowOrders(const Orders: _Collection);
  public
    constructor Create;
    destructor Destroy; override;
    procedure Run(const Url, Folder, Schema: WideString);
  end;

constructor TPublisher.Create;
begin
  FEvents := TEvsStore.Create(nil);
  FEvents.OnPacketUploaded := PacketUploaded;
  FStore := FEvents.ComServer;
end;

destructor TPublisher.Destroy;
begin
  FStore := nil;
  FEvents.Free;
  inherited;
end;

procedure TPublisher.PacketUploaded(Sender: TObject; Packet: WideString; Number: Integer);
begin
  WriteLn('uploaded ', Packet, ', import ', Number);
end;

procedure TPublisher.Publish;
var
  Known: TStringList;
  Wide: OleVariant;
begin
  { Methods with dozens of arguments are better called by their names. }
  Wide := FStore;
  FStore.AddTax('VAT', 'Standard rate', 15, False, None, None, False, 0);
  FStore.AddCurrency('EUR', 'Euro', None, 1.0837, False);
  FStore.AddTradingCountry('IRL', False);
  FStore.AddProductType('TEA', 'Teas', None, -1, tsNotSent, None, None, None, None, None, None, None, False, None);
  FStore.AddProductGroup('LEAF', 'Loose leaf', False, 0);
  Wide.AddProductCategory(7, 'Black teas <strong>');
  Wide.AddProduct('ASSAM-100', 'TEA', 'Assam, 100 g', strProductGroupID := 'LEAF', strTaxCode := 'VAT',
    dblWeight := 0.1, dblPrice1 := 7.25);
  Wide.AddProductAdditional(12);
  FStore.LockProduct;
  Wide.AddDebtor('D100', 'Murphy & Sons', strEMailAddress := 'sam@example.com');
  FStore.AddPaymentMethod('CARD', 'Credit card', tsYes, None, tsNotSent, None, False, None, -1, None, None);

  Known := TStringList.Create;
  try
    Known.Values['OrderNumber'] := '2001';
    Known.Values['Order'] := '2024-03-01T00:00:00';
    Known.Values['EMailAddress'] := 'sam@example.com';
    Known.Values['ShippingCost'] := '4.9';
    Known.Values['OrderStatus'] := 'Confirmed';
    Known.Values['PaymentMethodID'] := 'CARD';
    Known.Values['DebtorID'] := 'D100';
    Known.Values['CustomerCompanyName'] := string(FStore.XMLEncode('Murphy & Sons', False));
    FStore.AddOrder(OrderList(Known));
  finally
    Known.Free;
  end;
  FStore.AddOrderLineItem(1, 'ASSAM-100', 3, 3, 7.25, EmptyParam, EmptyParam, EmptyParam, None, None, EmptyParam, None,
    None, None, None, None, EmptyParam, -1);
  FStore.AddOrderLineItem(2, 'ASSAM-100', 1, 1, 0, EmptyParam, EmptyParam, EmptyParam, None, None, EmptyParam, None,
    None, None, None, None, EmptyParam, -1);
  FStore.LockOrder;
end;

procedure TPublisher.ShowRefusal;
begin
  try
    FStore.AddTax('MUCH-TOO-LONG', None, 15, False, None, None, False, 0);
  except
    on E: EOleException do
      WriteLn('refused ', E.ErrorCode, ', ', E.Source, ': ', E.Message);
  end;
end;

procedure TPublisher.ShowOrders(const Orders: _Collection);
var
  I, J: Integer;
  AnOrder: _Order;
  Lines: _Collection;
  Line: _OrderLineItem;
begin
  for I := 1 to Orders.Count do
  begin
    AnOrder := IDispatch(Orders[I]) as _Order;
    WriteLn('order ', AnOrder.OrderNumber, ' of ', AnOrder.EMailAddress);
    Lines := AnOrder.LineItems;
    for J := 1 to Lines.Count do
    begin
      Line := IDispatch(Lines[J]) as _OrderLineItem;
      WriteLn('    line ', Line.LineNumber, ': ', Line.Quantity, ' at ', FloatToStr(Line.Price));
    end;
  end;
end;

procedure TPublisher.Run(const Url, Folder, Schema: WideString);
var
  Wide: OleVariant;
  Packets: WideString;
begin
  Wide := FStore;
  FStore.SetTempFilePath(Folder);
  Wide.Create(Schema, 57, strName := 'Coffee & Tea');
  Wide.AddAdditionalParameters;
  FStore.AddEnvelope('demo', 'demo', Url + '/upload', 0, '2.0.00');
  Publish;
  ShowRefusal;
  Packets := FStore.Send('', 'Memory', '', '', '');
  WriteLn('sent ', Packets);
  ShowOrders(IDispatch(FStore.ReceiveOrders(57, 'demo', 'demo', Url + '/orders', 'Collection', '')) as _Collection);
end;

var
  Publisher: TPublisher;
begin
  if ParamCount <> 3 then
  begin
    WriteLn(ErrOutput, 'usage: early_bound URL FOLDER SCHEMA');
    Halt(2);
  end;
  CoInitialize(nil);
  try
    Publisher := TPublisher.Create;
    try
      Publisher.Run(WideString(ParamStr(1)), WideString(ParamStr(2)), WideString(ParamStr(3)));
    finally
      Publisher.Free;
    end;
  except
    on E: Exception do
    begin
      WriteLn(ErrOutput, 'error: ', E.Message);
      ExitCode := 1;
    end;
  end;
  CoUninitialize;
end.
