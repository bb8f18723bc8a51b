// Plays a job of JSON lines: cscript play.js JOB RESULTS PROGRAM
// Writes results as the command line does, and the same calls as a VBScript program that takes RESULTS. The arguments of
// a line stand in interface order, null for those left out.

var files = new ActiveXObject("Scripting.FileSystemObject");
var job = files.OpenTextFile(WScript.Arguments(0));
var results = files.CreateTextFile(WScript.Arguments(1), true);
var program = files.CreateTextFile(WScript.Arguments(2), true);
var store = new ActiveXObject("Quill1XML.Store");

// VBScript has no ChrW everywhere: characters by their bytes in Windows-1252.
var ansi = { 0x20AC: 128, 0x2013: 150 };

function basicLiteral(value) {
    if (value === null) return "";
    if (typeof value == "boolean") return value ? "True" : "False";
    if (typeof value != "string") return String(value);
    var text = "\"\"";
    for (var i = 0; i < value.length; ++i) {
        var code = value.charCodeAt(i);
        text += " & Chr(" + (ansi[code] || code) + ")";
    }
    return text;
}

program.WriteLine("Set results = CreateObject(\"Scripting.FileSystemObject\").CreateTextFile(WScript.Arguments(0), True)");
program.WriteLine("Set store = CreateObject(\"Quill1XML.Store\")");

while (!job.AtEndOfStream) {
    var call = eval("(" + job.ReadLine() + ")");
    for (var method in call) {
        var given = [], places = [], literals = [];
        for (var name in call[method]) {
            var value = call[method][name];
            places.push("given[" + given.length + "]");
            literals.push(basicLiteral(value));
            given.push(value === null ? undefined : value);
        }
        var result = eval("store." + method + "(" + places.join(", ") + ")");
        if (result !== undefined) results.WriteLine("{\"" + method + "\":\"" + result + "\"}");

        // The first argument through a variable: it arrives by reference.
        if (literals.length > 0) {
            program.WriteLine("first = " + literals[0]);
            literals[0] = "first";
        }
        program.WriteLine("result = store." + method + "(" + literals.join(", ") + ")");
        program.WriteLine("If Not IsEmpty(result) Then results.WriteLine \"{\"\"" + method +
            "\"\":\"\"\" & result & \"\"\"}\"");
    }
}
results.Close();
program.WriteLine("results.Close");
program.Close();
