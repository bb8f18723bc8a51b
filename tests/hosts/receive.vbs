' What a script makes of fetched orders, a line each: cscript receive.vbs RESULTS STORE-URL
Set results = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)
Set store = CreateObject("Quill1XML.Store")
address = WScript.Arguments(1) & "/orders"

Sub Show(orders)
    For Each order In orders
        For Each line In order.LineItems
            results.WriteLine """LineNumber"":" & line.LineNumber & ",""SKU"":""" & line.SKU & """"
        Next
        results.WriteLine """OrderNumber"":" & order.OrderNumber
    Next
End Sub

Show store.ReceiveOrders(1, "demo", "demo", address)

' The text goes into a document of the host's own, of another version than the server's.
Set parsed = WScript.CreateObject("MSXML2.DOMDocument.6.0")
parsed.loadXML store.ReceiveOrders(1, "demo", "demo", address, "XMLString")
Show store.Orders(parsed.getElementsByTagName("Order"))

Set document = store.ReceiveOrders(1, "demo", "demo", address, "XMLDOMDocument")
document.getElementsByTagName("Order").item(0).removeAttribute "OrderNumber"
Set nameless = store.Orders(document.getElementsByTagName("Order"))(1)
On Error Resume Next
number = nameless.OrderNumber
results.WriteLine Err.Number & "|" & Err.Description
Err.Clear
results.WriteLine nameless.EMailAddress & "|" & Err.Number
results.Close
