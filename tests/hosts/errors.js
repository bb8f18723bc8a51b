// What a script sees of errors: cscript errors.js RESULTS
var results = new ActiveXObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), true);
var store = new ActiveXObject("Quill1XML.Store");
var calls = [
    function () { store.AddTax(""); },
    function () { store.AddTax("A", undefined, "much"); },
    function () { store.AddTax(null); }
];
for (var i = 0; i < calls.length; ++i) {
    try {
        calls[i]();
        results.WriteLine("no error");
    } catch (error) {
        results.WriteLine(error.number + "|" + error.description);
    }
}
results.Close();
