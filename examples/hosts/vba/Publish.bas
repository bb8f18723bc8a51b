Attribute VB_Name = "Publish"
Option Explicit

' In the immediate window: Publish.Run "http://127.0.0.1:8057", "C:\Temp\jobs", "C:\Temp\store.xsd"
Public Sub Run(ByVal url As String, ByVal folder As String, ByVal schema As String)
    Dim shop As Publisher
    Set shop = New Publisher
    shop.Begin url, folder, schema
    shop.AddRecords
    shop.ShowRefusal
    shop.Send
    shop.ShowOrders
End Sub
