// A host in JScript: publishes a small shop, hears of each packet, fetches the orders back.
// cscript //nologo publish.js URL FOLDER SCHEMA
if (WScript.Arguments.length != 3) {
    WScript.Echo("usage: cscript //nologo publish.js URL FOLDER SCHEMA");
    WScript.Quit(2);
}
var url = WScript.Arguments(0);
var store = new ActiveXObject("Quill1XML.Store");
var none;  // an argument that is left out

function store_PacketUploaded(packet, number) {
    WScript.Echo("uploaded " + packet + ", import " + number);
}

function hearEvents() {
    try {
        WScript.ConnectObject(store, "store_");
    } catch (error) {
        WScript.Echo("this script host hears no events");
    }
}

// What AddOrder reads: an element with every value, those that are not known too.
function orderList(known) {
    function attributes(unknown, names) {
        var text = "", list = names.split(" ");
        for (var i = 0; i < list.length; ++i) {
            var value = known[list[i]] === none ? unknown : store.XMLEncode(known[list[i]]);
            text += " " + list[i] + "=\"" + value + "\"";
        }
        return text;
    }

    return "<Order" + attributes("1899-12-30T00:00:00",
        "Order Confirmed Dispatched Cancelled Picked RequiredDelivery") + attributes("-1",
        "OrderNumber ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate ShippingInsuranceCost " +
        "WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported") +
        attributes("StringDefault", "EMailAddress ShippingContactName ShippingContactNumber ShippingContactNumber2 " +
        "ShippingAddressLine1 ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity " +
        "ShippingPostalCode ShippingStateProvince ShippingStateProvinceName ShippingCountryCode CourierCountryCode " +
        "CourierCode CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID CreditCardNumber " +
        "CreditCardExpiry CreditCardPinNumber CardType TransactionIndex BankReference Hash Message " +
        "DisplayCurrencyCode SessionID CollectionPointID CollectionPoint CollectionAddressLine1 " +
        "CollectionAddressLine2 CollectionAddressLine3 CollectionAddressLine4 CollectionCity CollectionPostalCode " +
        "CollectionStateProvince DebtorID BillingContactName IDNumber ContactNumber ContactNumber2 " +
        "BillingAddressLine1 BillingAddressLine2 BillingAddressLine3 BillingAddressLine4 BillingCity " +
        "BillingPostalCode BillingStateProvince BillingStateProvinceName BillingCountryCode PurchaseNumber " +
        "CustomerCompanyName") + "/>";
}

function publish() {
    store.AddTax("VAT", "Standard rate", 15);
    store.AddCurrency("EUR", "Euro", none, 1.0837);
    store.AddTradingCountry("IRL");
    store.AddProductType("TEA", "Teas");
    store.AddProductGroup("LEAF", "Loose leaf");
    store.AddProductCategory(7, "Black teas <strong>");
    store.AddProduct("ASSAM-100", "TEA", "Assam, 100 g", none, none, none, none, none, none, none, none, none, none,
        "LEAF", "VAT", 0.1, none, none, none, none, none, none, none, none, none, none, none, 7.25);
    store.AddProductAdditional(12);
    store.LockProduct();
    store.AddDebtor("D100", "Murphy & Sons", none, none, none, none, none, "sam@example.com");
    store.AddPaymentMethod("CARD", "Credit card", 1);
    store.AddOrder(orderList({
        OrderNumber: "2001", Order: "2024-03-01T00:00:00", EMailAddress: "sam@example.com", ShippingCost: "4.9",
        OrderStatus: "Confirmed", PaymentMethodID: "CARD", DebtorID: "D100", CustomerCompanyName: "Murphy & Sons"
    }));
    store.AddOrderLineItem(1, "ASSAM-100", 3, 3, 7.25);
    store.AddOrderLineItem(2, "ASSAM-100", 1, 1, 0);
    store.LockOrder();
}

function showRefusal() {
    try {
        store.AddTax("MUCH-TOO-LONG");
    } catch (error) {
        // JScript does not tell the source.
        WScript.Echo("refused " + error.number + ": " + error.description);
    }
}

function forEach(collection, action) {
    for (var items = new Enumerator(collection); !items.atEnd(); items.moveNext()) action(items.item());
}

hearEvents();
store.SetTempFilePath(WScript.Arguments(1));
store.Create(WScript.Arguments(2), 57, none, "Coffee & Tea");
store.AddAdditionalParameters();
store.AddEnvelope("demo", "demo", url + "/upload");
publish();
showRefusal();
var packets = store.Send();
WScript.Echo("sent " + packets);
forEach(store.ReceiveOrders(57, "demo", "demo", url + "/orders"), function (order) {
    WScript.Echo("order " + order.OrderNumber + " of " + order.EMailAddress);
    forEach(order.LineItems, function (line) {
        WScript.Echo("    line " + line.LineNumber + ": " + line.Quantity + " at " + line.Price);
    });
});
