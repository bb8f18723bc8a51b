{ What AddOrder reads: an element with every value, those that are not known too. }
unit order_list;

{$ifdef FPC}{$mode delphi}{$endif}

interface

uses Classes;

{ The values that are known stand as Name=Value, already encoded for XML. }
function OrderList(Known: TStrings): WideString;

implementation

function Attributes(Known: TStrings; const Unknown, Names: string): string;
var
  List: TStringList;
  I: Integer;
  Value: string;
begin
  Result := '';
  List := TStringList.Create;
  try
    List.DelimitedText := Names;
    for I := 0 to List.Count - 1 do
    begin
      Value := Unknown;
      if Known.IndexOfName(List[I]) >= 0 then
        Value := Known.Values[List[I]];
      Result := Result + ' ' + List[I] + '="' + Value + '"';
    end;
  finally
    List.Free;
  end;
end;

function OrderList(Known: TStrings): WideString;
begin
  Result := WideString('<Order'
    + Attributes(Known, '1899-12-30T00:00:00', 'Order Confirmed Dispatched Cancelled Picked RequiredDelivery')
    + Attributes(Known, '-1', 'OrderNumber ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate '
      + 'ShippingInsuranceCost WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported')
    + Attributes(Known, 'StringDefault', 'EMailAddress ShippingContactName ShippingContactNumber '
      + 'ShippingContactNumber2 ShippingAddressLine1 ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 '
      + 'ShippingCity ShippingPostalCode ShippingStateProvince ShippingStateProvinceName ShippingCountryCode '
      + 'CourierCountryCode CourierCode CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID '
      + 'CreditCardNumber CreditCardExpiry CreditCardPinNumber CardType TransactionIndex BankReference Hash Message '
      + 'DisplayCurrencyCode SessionID CollectionPointID CollectionPoint CollectionAddressLine1 '
      + 'CollectionAddressLine2 CollectionAddressLine3 CollectionAddressLine4 CollectionCity CollectionPostalCode '
      + 'CollectionStateProvince DebtorID BillingContactName IDNumber ContactNumber ContactNumber2 '
      + 'BillingAddressLine1 BillingAddressLine2 BillingAddressLine3 BillingAddressLine4 BillingCity '
      + 'BillingPostalCode BillingStateProvince BillingStateProvinceName BillingCountryCode PurchaseNumber '
      + 'CustomerCompanyName')
    + '/>');
end;

end.
