// Plays a job of JSON lines: cscript play.js JOB RESULTS PROGRAM
// Writes results as the command line does, and the same calls as a VBScript program that takes RESULTS. The job is in
// UTF-16. The file "interface" beside this one has a line for each method: its name, then the name and the type of each
// parameter in interface order.

var files = new ActiveXObject("Scripting.FileSystemObject");
var results = files.CreateTextFile(WScript.Arguments(1), true);
var program = files.CreateTextFile(WScript.Arguments(2), true);
var store = new ActiveXObject("Quill1XML.Store");

function forEachLine(name, unicode, action) {
    for (var file = files.OpenTextFile(name, 1, false, unicode ? -1 : 0); !file.AtEndOfStream;) action(file.ReadLine());
}

// Scripts have no literal for a date that every language reads: days since 30 December 1899.
function automationDate(text) {
    var f = text.match(/\d+/g);
    return Date.UTC(f[0], f[1] - 1, f[2], f[3] || 0, f[4] || 0, f[5] || 0) / 86400000 + 25569;
}

// VBScript has no ChrW everywhere: characters by their bytes in Windows-1252.
var ansi = { 0x20AC: 128, 0x2013: 150 };

function basicLiteral(value) {
    if (value === undefined) return "";
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

var parameters = {};
forEachLine(files.BuildPath(files.GetParentFolderName(WScript.ScriptFullName), "interface"), false, function (line) {
    var words = line.split(" ");
    parameters[words[0]] = words.slice(1);
});

function play(method, args) {
    var given = [], places = [], literals = [], last = 0;
    for (var i = 0; i < parameters[method].length; i += 2) {
        var value = args[parameters[method][i]];
        if (value !== undefined && parameters[method][i + 1] == "Date") value = automationDate(value);
        if (value !== undefined) last = given.length + 1;
        places.push("given[" + given.length + "]");
        literals.push(basicLiteral(value));
        given.push(value);
    }
    var result = eval("store." + method + "(" + places.slice(0, last).join(", ") + ")");
    if (result !== undefined) results.WriteLine("{\"" + method + "\":\"" + result + "\"}");

    // The first argument through a variable: it arrives by reference.
    if (literals[0]) {
        program.WriteLine("first = " + literals[0]);
        literals[0] = "first";
    }
    program.WriteLine("result = store." + method + "(" + literals.slice(0, last).join(", ") + ")");
    program.WriteLine("If Not IsEmpty(result) Then results.WriteLine \"{\"\"" + method + "\"\":\"\"\" & result & \"\"\"}\"");
}

forEachLine(WScript.Arguments(0), true, function (line) {
    var call = eval("(" + line + ")");
    for (var method in call) play(method, call[method]);
});
results.Close();
program.WriteLine("results.Close");
program.Close();
