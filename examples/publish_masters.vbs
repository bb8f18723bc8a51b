' Publishes two tax codes: run it beside webstore-sandbox, with C:\Temp\store.xsd from "quill1xml schema".
Set store = CreateObject("Quill1XML.Store")
store.SetTempFilePath "C:\Temp"
store.Create "C:\Temp\store.xsd", 57, , "Coffee & Tea"
store.AddAdditionalParameters
store.AddEnvelope "demo", "demo", "http://127.0.0.1:8057/upload"
store.AddTax "VAT", , 15
store.AddTax "ZERO", "Zero-rated", 0
result = store.Send
WScript.Echo result
