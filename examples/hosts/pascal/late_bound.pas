{ A late-bound host in Delphi or Free Pascal: publishes a small shop, hears of each packet, fetches the orders back. }
program late_bound;

{$ifdef FPC}{$mode delphi}{$endif}
{$apptype console}

uses Windows, SysUtils, Classes, Variants, ActiveX, ComObj, order_list, packet_sink;

procedure ShowPacket(const Packet: WideString; Number: Integer);
begin
  WriteLn('uploaded ', Packet, ', import ', Number);
end;

procedure Publish(const Store: OleVariant);
var
  Known: TStringList;
begin
  Store.AddTax('VAT', 'Standard rate', 15);
  Store.AddCurrency('EUR', 'Euro', dblExchangeRate := 1.0837);
  Store.AddTradingCountry('IRL');
  Store.AddProductType('TEA', 'Teas');
  Store.AddProductGroup('LEAF', 'Loose leaf');
  Store.AddProductCategory(7, 'Black teas <strong>');
  Store.AddProduct('ASSAM-100', 'TEA', 'Assam, 100 g', strProductGroupID := 'LEAF', strTaxCode := 'VAT',
    dblWeight := 0.1, dblPrice1 := 7.25);
  Store.AddProductAdditional(12);
  Store.LockProduct;
  Store.AddDebtor('D100', 'Murphy & Sons', strEMailAddress := 'sam@example.com');
  Store.AddPaymentMethod('CARD', 'Credit card', 1);

  Known := TStringList.Create;
  try
    Known.Values['OrderNumber'] := '2001';
    Known.Values['Order'] := '2024-03-01T00:00:00';
    Known.Values['EMailAddress'] := 'sam@example.com';
    Known.Values['ShippingCost'] := '4.9';
    Known.Values['OrderStatus'] := 'Confirmed';
    Known.Values['PaymentMethodID'] := 'CARD';
    Known.Values['DebtorID'] := 'D100';
    Known.Values['CustomerCompanyName'] := Store.XMLEncode('Murphy & Sons');
    Store.AddOrder(OrderList(Known));
  finally
    Known.Free;
  end;
  Store.AddOrderLineItem(1, 'ASSAM-100', 3, 3, 7.25);
  Store.AddOrderLineItem(2, 'ASSAM-100', 1, 1, 0);
  Store.LockOrder;
end;

procedure ShowRefusal(const Store: OleVariant);
begin
  try
    Store.AddTax('MUCH-TOO-LONG');
  except
    on E: EOleException do
      WriteLn('refused ', E.ErrorCode, ', ', E.Source, ': ', E.Message);
  end;
end;

procedure ShowOrders(const Orders: OleVariant);
var
  I, J: Integer;
  Order, Lines, Line: OleVariant;
begin
  for I := 1 to Orders.Count do
  begin
    Order := Orders.Item(I);
    WriteLn('order ', string(Order.OrderNumber), ' of ', string(Order.EMailAddress));
    Lines := Order.LineItems;
    for J := 1 to Lines.Count do
    begin
      Line := Lines.Item(J);
      WriteLn('    line ', string(Line.LineNumber), ': ', string(Line.Quantity), ' at ', string(Line.Price));
    end;
  end;
end;

procedure Run(const Url, Folder, Schema: WideString);
var
  Store: OleVariant;
  Sink: IDispatch;
  Connection: DWORD;
  Packets: string;
begin
  Store := CreateOleObject('Quill1XML.Store');
  Sink := TPacketSink.Create(ShowPacket);
  InterfaceConnect(IDispatch(Store), StoreEvents, Sink, Connection);
  Store.SetTempFilePath(Folder);
  Store.Create(Schema, 57, strName := 'Coffee & Tea');
  Store.AddAdditionalParameters;
  Store.AddEnvelope('demo', 'demo', Url + '/upload');
  Publish(Store);
  ShowRefusal(Store);
  Packets := Store.Send;
  WriteLn('sent ', Packets);
  ShowOrders(Store.ReceiveOrders(57, 'demo', 'demo', Url + '/orders'));
  InterfaceDisconnect(IDispatch(Store), StoreEvents, Connection);
end;

begin
  if ParamCount <> 3 then
  begin
    WriteLn(ErrOutput, 'usage: late_bound URL FOLDER SCHEMA');
    Halt(2);
  end;
  CoInitialize(nil);
  try
    Run(WideString(ParamStr(1)), WideString(ParamStr(2)), WideString(ParamStr(3)));
  except
    on E: Exception do
    begin
      WriteLn(ErrOutput, 'error: ', E.Message);
      ExitCode := 1;
    end;
  end;
  CoUninitialize;
end.
