' What a script sees of errors and properties, a line each: cscript errors.vbs RESULTS
On Error Resume Next
Set results = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True)
Set store = CreateObject("Quill1XML.Store")
Set builder = CreateObject("Quill1XML.CString")

Sub Report
    results.WriteLine Err.Number & "|" & Err.Source & "|" & Err.Description
    Err.Clear
End Sub

store.AddTax ""
Report
store.AddTax "A", , "much"
Report
store.AddTax Null
Report
store.AddTax
Report
store.AddTradingCountry "ZA", False, 3
Report
store.SetStoreID "99999999999"
Report
store.AddNothing
results.WriteLine Err.Number
Err.Clear

builder.concat "ab"
builder.Concat 12
results.WriteLine builder.length & "|" & builder.text
Report
results.Close
