' What a script sees of errors, properties and collections, a line each: cscript members.vbs RESULTS STORE-URL
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
For Each code In Array("VAT123456789", "", "VAT123456789")
    If code = "" Then store.ReceiveOrders 1, "demo", "demo", "http://127.0.0.1:1/" Else store.AddTax code
    Report
Next
store.AddNothing
results.WriteLine Err.Number
Err.Clear

builder.concat "ab"
builder.Concat 12
results.WriteLine builder.length & "|" & builder.text

Set orders = store.ReceiveOrders(1, "demo", "demo", WScript.Arguments(1) & "/orders")
results.WriteLine orders(1).LineItems(1).Price & "|" & orders.Item(1).LineItems.Item(1).SKU
orders.Item orders.Count + 1
Report
results.WriteLine Err.Number & "||"

' A packet that cannot be sent, before and after it is tried.
store.SetTempFilePath "bad"
store.Create "vbscript\store.xsd", 57
store.AddAdditionalParameters
store.AddEnvelope "demo", "demo", "http://127.0.0.1:1/"
store.AddTax "V1", "VAT", 15
store.AddTax "V2", "VAT", 15, , "a&b"
results.WriteLine store.CheckPackets()
store.SendTempFile "Tax"
results.WriteLine Err.Number & "|" & store.LastFailure()
Err.Clear
store.SetStrict True
store.AddTax "V3", String(51, "x")
Report
results.Close
