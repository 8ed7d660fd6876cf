' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' A transmitter whose server is a class of this script: what the server changes in its arguments
' reaches the transmitter and its callers.
suite = "TransmitterVbs"

Const kHistorianDisabled = 0

Class ScriptServer
  Public Version
  Public FileName
  Public TypeName
  Public Items
  Public Protocols
  Public Replacement
  Public PasswordLevel
  Public Calls

  Public Function ReadTxm(address, item, comPort, comSettings)
    Calls = Calls & "read " & address & " " & item.ItemID & " " & comPort & " " & comSettings & ";"
    If IsObject(Replacement) Then Set item = Replacement
    item.Value(1) = item.Value(1) + 1
    ReadTxm = True
  End Function

  Public Function WriteTxm(address, item, comPort, comSettings)
    Calls = Calls & "write " & item.ItemID & ";"
    If IsObject(Replacement) Then Set item = Replacement
    WriteTxm = True
  End Function

  Public Function ReadPassword(address, level, comPort, comSettings)
    level = PasswordLevel
    ReadPassword = True
  End Function

  Public Function ReadDisplay(address, answer, comPort, comSettings)
    answer = "12.5 m3/h"
    ReadDisplay = True
  End Function

  Public Function AutoConnect(changeBaud, address, comPort, comSettings, softwareVersion)
    Calls = Calls & "connect " & changeBaud & " " & softwareVersion & ";"
    softwareVersion = "V7"
    AutoConnect = True
  End Function

  Public Function GetComObject()
    Set GetComObject = New ScriptPort
  End Function

  Public Function FunctionTitle(functionID)
    FunctionTitle = "Function " & functionID
    functionID = 99
  End Function

  Public Function LoadSettings(name)
    Calls = Calls & "load " & name & ";"
    name = "changed"
    LoadSettings = True
  End Function

  Public Function SendMessage(message)
    SendMessage = Len(message)
  End Function
End Class

Class ScriptPort
  Public Property Get Name()
    Name = "COM1"
  End Property
  Public Property Get Settings()
    Settings = "9600,n,8,1"
  End Property
End Class

Dim server, txm, items, first, second, variable, text, number

Set server = New ScriptServer
Set items = CreateObject("pvItems32.CItems")
Set server.Items = items
Set server.Protocols = CreateObject("pvItems32.CProtocols")
server.TypeName = "Scripted"
server.PasswordLevel = 3
Set txm = CreateObject("pvItems32.CTxm")
Set txm.Server = server
txm.Historian = kHistorianDisabled

Set first = NewItem(7, 0)
Set second = NewItem(8, 64)

Set variable = first
server.Calls = ""
CheckCase "ReadsThroughTheScript", txm.ReadTxm(variable), True
CheckCase "PassesPlainValues", server.Calls, "read 1 7 1 4800,n,8,1;"
CheckCase "SelectsTheProtocol", server.Protocols.ActiveProtocol, 1
CheckCase "ChangesTheItem", first.Value(1), 11

Set server.Replacement = second
CheckCase "ReadsWithAReplacement", txm.ReadTxm(variable), True
CheckCase "ReplacesTheCallersItem", variable.ItemID, 8
CheckCase "ReadsTheReplacement", second.Value(1), 11

Set variable = first
CheckCase "WritesThroughTheScript", txm.WriteTxm(variable), True
CheckCase "ReplacesTheWrittenItem", variable.ItemID, 8
CheckCase "RefreshesTheLevelOfTheReplacement", txm.Password, 3

server.PasswordLevel = 2
CheckCase "AsksForTheLevel", txm.GetPassword(), 2

text = "before"
CheckCase "ReadsTheDisplay", txm.ReadDisplay(text), True
CheckCase "GivesTheDisplayText", text, "12.5 m3/h"

server.Calls = ""
CheckCase "Connects", txm.AutoConnect(), True
CheckCase "PassesThePortText", server.Calls, "connect True COM1;"
CheckCase "TakesTheVersion", txm.Version, "V7"
CheckCase "TakesTheSettings", txm.ComSettings, "9600,n,8,1"
CheckCase "IsConnected", txm.Connected, True

number = 4
CheckCase "AsksForATitle", txm.FunctionTitle(number), "Function 4"
CheckCase "ChangesTheNumber", number, 99

server.Calls = ""
CheckCase "LoadsSettings", txm.LoadSettings("a.ini"), True
CheckCase "LoadsUnderTheName", server.Calls, "load a.ini;"
CheckCase "SendsMessages", txm.SendMessage("four"), 4
CheckCase "ShowsItsName", txm.NameFormatted(7), "TXM#1:Untitled TXM (Scripted)"

Set txm.Server = Nothing
WScript.Echo "DONE"

Function NewItem(id, access)
  Set NewItem = items.Add(CStr(id), id, True, access, False, False, 0.5, 4)
  NewItem.Variables.Add "1", "Caption", "", "", 0, 17, 1, 2, 10, 0, 4
End Function

Sub CheckCase(title, actual, expected)
  If IsNumeric(actual) And IsNumeric(expected) Then
    Check CDbl(actual), CDbl(expected)
  Else
    Check actual, expected
  End If
  EndOf title
End Sub
