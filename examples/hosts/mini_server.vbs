' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' The smallest start: a transmitter server as one short class. This one keeps the values in memory; put
' your own telegrams where it reads and writes them.
'
'   cscript //nologo mini_server.vbs <settings name>
'
' <settings name> is the common name of the settings files, such as C:\data\fluxor. Needs pvItems32
' registered. Ends with DONE; anything wrong ends it with exit code 1.
Option Explicit

Class MiniServer
  Public Items
  Public Dimensions
  Public Lists
  Public Functions
  Public Protocols
  Public FileName
  Public ComError
  Public ComAnswerError
  Public ComAnswerErrorText
  Public Name
  Public Settings
  Private memory
  Private level

  Private Sub Class_Initialize()
    Set Items = CreateObject("pvItems32.CItems")
    Set Dimensions = CreateObject("pvItems32.CDimensions")
    Set Lists = CreateObject("pvItems32.CDLists")
    Set Functions = CreateObject("pvItems32.CFunctions")
    Set Protocols = CreateObject("pvItems32.CProtocols")
    Set memory = CreateObject("Scripting.Dictionary")
    ComError = 0
    ComAnswerError = 0
    level = 0
  End Sub

  Public Property Let Version(value)
    Items.Version = value
  End Property

  Public Property Get TypeName()
    TypeName = "Mini"
  End Property

  Public Function LoadSettings(settingsName)
    LoadSettings = Dimensions.LoadSettingsNew(settingsName & ".dim") And _
        Lists.LoadSettingsNew(settingsName & ".lst") And _
        Items.LoadSettingsNew(settingsName & ".itm") And _
        Items.Versions.LoadSettingsNew(settingsName & ".ver")
  End Function

  ' By reference: the text of the port comes in, the version of the transmitter's software is returned.
  Public Function AutoConnect(changeBaud, address, comPort, comSettings, softwareVersion)
    Name = "Memory"
    Settings = comSettings
    softwareVersion = "2.30"
    AutoConnect = True
  End Function

  Public Function GetComObject()
    Set GetComObject = Me
  End Function

  Public Function ReadTxm(address, item, comPort, comSettings)
    Dim index
    For index = 1 To item.Variables.Count
      If memory.Exists(item.Key & "." & index) Then item.Value(index) = memory.Item(item.Key & "." & index)
      item.Dirty(index) = False
    Next
    ReadTxm = True
  End Function

  Public Function WriteTxm(address, item, comPort, comSettings)
    Dim index
    For index = 1 To item.Variables.Count
      memory.Item(item.Key & "." & index) = item.Value(index)
      item.Dirty(index) = False
    Next
    If item.ItemID = 140 Then level = 4
    WriteTxm = True
  End Function

  Public Function ReadPassword(address, answer, comPort, comSettings)
    answer = level
    ReadPassword = True
  End Function

  Public Function ReadDisplay(address, answer, comPort, comSettings)
    answer = "Values in memory"
    ReadDisplay = True
  End Function
End Class

' --- A host that uses it ----------------------------------------------------------------------------

Dim txm, item, shown

On Error Resume Next
Main
If Err.Number <> 0 Then
  WScript.Echo "Error " & Err.Number & ": " & Err.Description
  WScript.Quit 1
End If
WScript.Echo "DONE"

Sub Main()
  Set txm = CreateObject("pvItems32.CTxm")
  Set txm.Server = New MiniServer
  txm.Historian = 0
  If Not txm.LoadSettings(WScript.Arguments.Item(0)) Then Fail "Cannot load the settings files."
  If Not txm.AutoConnect(True) Then Fail "Cannot connect."
  WScript.Echo txm.NameFormatted & ", software " & txm.Version & ", " & txm.Items.Count & " items"

  If txm.ReadDisplay(shown) Then WScript.Echo "Display: " & shown
  Set item = txm.Items.Item("140")
  If Not txm.WriteTxm(item, True) Then Fail "Cannot enter the password."
  WScript.Echo "Level " & txm.Password

  Set item = txm.Items.Item("32")
  txm.ItemValue(item) = 7.5
  If Not txm.WriteTxm(item, True) Then Fail "Cannot write."
  item.Value = 0
  If Not txm.ReadTxm(item) Then Fail "Cannot read."
  WScript.Echo item.Caption & ": " & txm.ItemValue(item, 1, -1, -2, 2)
End Sub

Sub Fail(message)
  WScript.Echo message
  WScript.Quit 1
End Sub
