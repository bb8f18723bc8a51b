// What a script makes of fetched orders, a line each: cscript receive.js RESULTS STORE-URL
var results = new ActiveXObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), true, true);
var store = new ActiveXObject("Quill1XML.Store");
var address = WScript.Arguments(1) + "/orders";

function forEach(collection, action) {
    for (var items = new Enumerator(collection); !items.atEnd(); items.moveNext()) action(items.item());
}

function show(orders) {
    forEach(orders, function (order) {
        forEach(order.LineItems, function (line) {
            results.WriteLine("\"LineNumber\":" + line.LineNumber + ",\"SKU\":\"" + line.SKU + "\"");
        });
        results.WriteLine("\"OrderNumber\":" + order.OrderNumber);
    });
}

show(store.ReceiveOrders(1, "demo", "demo", address));

// The text goes into a document of the host's own, of another version than the server's.
var parsed = new ActiveXObject("MSXML2.DOMDocument.6.0");
parsed.loadXML(store.ReceiveOrders(1, "demo", "demo", address, "XMLString"));
show(store.Orders(parsed.getElementsByTagName("Order")));

var document = store.ReceiveOrders(1, "demo", "demo", address, "XMLDOMDocument");
document.getElementsByTagName("Order").item(0).removeAttribute("OrderNumber");
var nameless = store.Orders(document.getElementsByTagName("Order")).Item(1);
try {
    results.WriteLine(nameless.OrderNumber);
} catch (error) {
    results.WriteLine((error.number & 0xFFFF) + "|" + error.description);
}
results.WriteLine(nameless.EMailAddress + "|0");
results.Close();
