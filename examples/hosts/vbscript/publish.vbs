' A host in VBScript: publishes a small shop, hears of each packet, fetches the orders back.
' cscript //nologo publish.vbs URL FOLDER SCHEMA
Option Explicit
Dim url, store, packets, orders, order, line
If WScript.Arguments.Count <> 3 Then
    WScript.Echo "usage: cscript //nologo publish.vbs URL FOLDER SCHEMA"
    WScript.Quit 2
End If
url = WScript.Arguments(0)
Set store = CreateObject("Quill1XML.Store")

On Error Resume Next
WScript.ConnectObject store, "store_"
If Err.Number <> 0 Then WScript.Echo "this script host hears no events"
On Error GoTo 0

Sub store_PacketUploaded(packet, number)
    WScript.Echo "uploaded " & packet & ", import " & number
End Sub

store.SetTempFilePath WScript.Arguments(1)
store.Create WScript.Arguments(2), 57, , "Coffee & Tea"
store.AddAdditionalParameters
store.AddEnvelope "demo", "demo", url & "/upload"

store.AddTax "VAT", "Standard rate", 15
store.AddCurrency "EUR", "Euro", , 1.0837
store.AddTradingCountry "IRL"
store.AddProductType "TEA", "Teas"
store.AddProductGroup "LEAF", "Loose leaf"
store.AddProductCategory 7, "Black teas <strong>"
' The commas stand for what is left out: the 14th argument is the group, the 28th the price.
store.AddProduct "ASSAM-100", "TEA", "Assam, 100 g", , , , , , , , , , , "LEAF", "VAT", 0.1, , , , , , , , , , , , 7.25
store.AddProductAdditional 12
store.LockProduct
store.AddDebtor "D100", "Murphy & Sons", , , , , , "sam@example.com"
store.AddPaymentMethod "CARD", "Credit card", 1

Dim known
Set known = CreateObject("Scripting.Dictionary")
known("OrderNumber") = "2001"
known("Order") = "2024-03-01T00:00:00"
known("EMailAddress") = "sam@example.com"
known("ShippingCost") = "4.9"
known("OrderStatus") = "Confirmed"
known("PaymentMethodID") = "CARD"
known("DebtorID") = "D100"
known("CustomerCompanyName") = "Murphy & Sons"
store.AddOrder OrderList(known)
store.AddOrderLineItem 1, "ASSAM-100", 3, 3, 7.25
store.AddOrderLineItem 2, "ASSAM-100", 1, 1, 0
store.LockOrder

On Error Resume Next
store.AddTax "MUCH-TOO-LONG"
If Err.Number <> 0 Then WScript.Echo "refused " & Err.Number & ", " & Err.Source & ": " & Err.Description
On Error GoTo 0

packets = store.Send
WScript.Echo "sent " & packets

Set orders = store.ReceiveOrders(57, "demo", "demo", url & "/orders")
For Each order In orders
    WScript.Echo "order " & order.OrderNumber & " of " & order.EMailAddress
    For Each line In order.LineItems
        WScript.Echo "    line " & line.LineNumber & ": " & line.Quantity & " at " & line.Price
    Next
Next

' What AddOrder reads: an element with every value, those that are not known too.
Function OrderList(known)
    OrderList = "<Order" & Attributes(known, "1899-12-30T00:00:00", _
        "Order Confirmed Dispatched Cancelled Picked RequiredDelivery") & Attributes(known, "-1", _
        "OrderNumber ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate ShippingInsuranceCost " & _
        "WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported") & Attributes(known, _
        "StringDefault", "EMailAddress ShippingContactName ShippingContactNumber ShippingContactNumber2 " & _
        "ShippingAddressLine1 ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity " & _
        "ShippingPostalCode ShippingStateProvince ShippingStateProvinceName ShippingCountryCode CourierCountryCode " & _
        "CourierCode CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID CreditCardNumber " & _
        "CreditCardExpiry CreditCardPinNumber CardType TransactionIndex BankReference Hash Message " & _
        "DisplayCurrencyCode SessionID CollectionPointID CollectionPoint CollectionAddressLine1 " & _
        "CollectionAddressLine2 CollectionAddressLine3 CollectionAddressLine4 CollectionCity CollectionPostalCode " & _
        "CollectionStateProvince DebtorID BillingContactName IDNumber ContactNumber ContactNumber2 " & _
        "BillingAddressLine1 BillingAddressLine2 BillingAddressLine3 BillingAddressLine4 BillingCity " & _
        "BillingPostalCode BillingStateProvince BillingStateProvinceName BillingCountryCode PurchaseNumber " & _
        "CustomerCompanyName") & "/>"
End Function

Function Attributes(known, unknown, names)
    Dim name
    For Each name In Split(names)
        If known.Exists(name) Then
            Attributes = Attributes & " " & name & "=""" & store.XMLEncode(known(name)) & """"
        Else
            Attributes = Attributes & " " & name & "=""" & unknown & """"
        End If
    Next
End Function
