// What a script sees of failures, a line each: cscript errors.js RESULTS STORE-URL
var files = new ActiveXObject("Scripting.FileSystemObject");
var results = files.CreateTextFile(WScript.Arguments(0), true);
var store = new ActiveXObject("Quill1XML.Store");
var order = new ActiveXObject("Quill1XML.Order");
var shell = new ActiveXObject("WScript.Shell");
var nobody = "http://127.0.0.1:1/";
var nodes = new ActiveXObject("MSXML2.DOMDocument.6.0");
nodes.loadXML("<Store a='1'><!-- none --><Order OrderNumber='7'/><b> words </b></Store>");

function addTax(key, rate) {
    return function () { store.AddTax(key, undefined, rate); };
}

function receive(address) {
    return function () { return store.ReceiveOrders(1, "demo", "demo", address).Count; };
}

function numberOf(node) {
    return function () {
        order.Initialise(node);
        return order.OrderNumber;
    };
}

// A file that the pattern finds is posted, and nobody listens.
function post(fileName, pattern) {
    return function () {
        var folder = files.CreateFolder("images").Path;
        try {
            var file = files.CreateTextFile(files.BuildPath(folder, fileName));
            file.Write("GIF89a");
            file.Close();
            return store.SendImage(8, "u", "p", folder, pattern, 0, nobody);
        } finally {
            files.DeleteFolder(folder);
        }
    };
}

// The class of orders is another's, whose objects cannot be initialised.
function withoutOrders(action) {
    return function () {
        var key = "HKLM\\Software\\Classes\\Quill1XML.Order\\CLSID\\";
        var own = shell.RegRead(key);
        shell.RegWrite(key, shell.RegRead("HKLM\\Software\\Classes\\Scripting.Dictionary\\CLSID\\"));
        try {
            return action();
        } finally {
            shell.RegWrite(key, own);
        }
    };
}

var calls = [
    addTax("A", "much"), addTax(null), addTax("VAT123456789"), receive(nobody), addTax("VAT123456789"),
    numberOf(nodes), numberOf(nodes.documentElement.getAttributeNode("a")), numberOf(nodes.documentElement.firstChild),
    numberOf(store), numberOf(nodes.selectSingleNode("//Order")),
    function () { return store.Orders(nodes.selectNodes("//text() | //comment() | //Order")).Count; },
    withoutOrders(receive(WScript.Arguments(1) + "/orders")),
    post("plain", "*.*"), post("IMG1.jpg", "IMG???.jpg"), post("\u0424\u041E\u0422\u041E1.gif", "\u0444\u043E\u0442\u043E*.gif"),
    post("IMG1.jpg", "IMG?.gif")
];
for (var i = 0; i < calls.length; ++i) {
    try {
        results.WriteLine(calls[i]());
    } catch (error) {
        results.WriteLine(error.number + "|" + error.description);
    }
}
results.Close();
