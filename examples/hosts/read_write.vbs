' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Connects to a Fluxor transmitter, reads and writes items and shows the audit file that resulted.
'
'   cscript //nologo read_write.vbs <settings name> <history folder> <language index>
'
' <settings name> is the common name of the settings files, such as C:\data\fluxor. The transmitter is
' expected at address 1 of COM1. Needs pvItems32 and Fluxor.Server registered. Ends with DONE;
' anything wrong ends it with exit code 1.
Option Explicit

' Scripts see no constants of a type library, so those in use are named here.
Const kForReading = 1
Const kShowValueAndUnit = 2
Const kOwnUnit = -1
Const kOwnDecimals = -2
Const kHistorySilent = 1
Const kHistoryFolder = 8
Const kPackedRecord = 16
Const kDimensionNone = 17
Const kTextNeededLevel = 1102
Const kTextWriteProtected = 1101

Const kEnterPassword = "140"
Const kTechnicianPassword = "2222"
Const kWrongPassword = "guess"
Const kOutOfLimits = 0

' Writes that the transmitter is meant to refuse, and those that it refused.
Const kIntendedRefusals = 2
Dim refusals
refusals = 0

Dim files, utility, codes, txm, searchReport

On Error Resume Next
Main
If Err.Number <> 0 Then
  WScript.Echo "Error " & Err.Number & ": " & Err.Description
  WScript.Quit 1
End If
WScript.Echo "DONE"

Sub Main()
  Dim arguments
  Set arguments = WScript.Arguments
  If arguments.Count <> 3 Then
    Fail "Usage: read_write.vbs <settings name> <history folder> <language index>"
  End If
  Set files = CreateObject("Scripting.FileSystemObject")
  Set utility = CreateObject("pvItems32.CUtility")
  Set codes = CreateObject("pvItems32.CComUtility")
  utility.Languages.ActiveLanguageID = utility.pvCInt(arguments.Item(2))
  utility.AppDirectory(kHistoryFolder) = arguments.Item(1)

  MakeTransmitter arguments.Item(0)
  Connect
  ReadSome
  WriteSome
  ShowHistory arguments.Item(1)
  ShowLine
End Sub

Sub Fail(message)
  WScript.Echo message
  WScript.Quit 1
End Sub

Sub Heading(text)
  WScript.Echo ""
  WScript.Echo text
  WScript.Echo String(Len(text), "-")
End Sub

' --- Connection -------------------------------------------------------------------------------------

Sub MakeTransmitter(settings)
  Set txm = CreateObject("pvItems32.CTxm")
  Set txm.Server = CreateObject("Fluxor.Server")
  txm.Name = "Cooling water"
  txm.ComPort = 1
  txm.ComSettings = "9600,n,8,1"
  txm.Historian = kHistorySilent
  txm.HistorianTechName = "M. Keller"
  txm.HistorianComment = "Commissioning"
  If Not txm.LoadSettings(settings) Then
    Fail "Cannot load the settings files " & settings & ".*"
  End If
End Sub

' The server tries the other baud rates too, and the transmitter takes over what it found.
Sub Connect()
  Dim shown
  Heading txm.NameFormatted
  If Not txm.AutoConnect(True) Then
    Fail "There is no transmitter at COM" & txm.ComPort & "."
  End If
  searchReport = txm.GetMessage
  WScript.Echo "COM" & txm.ComPort & ":" & txm.ComSettings & "  software " & txm.Version & "  " & _
      txm.Items.Count & " items"
  If txm.ReadDisplay(shown) Then
    WScript.Echo "Display: " & shown
  End If
End Sub

' --- Reading ----------------------------------------------------------------------------------------

' With its parent: the item that carries its unit is read first.
Sub ReadSome()
  Dim key
  Heading "Reading"
  For Each key In Array("1", "2", "4", "8", "20", "21", "23", "30", "32", "37", "70", "110", "131", "133")
    ReadAndShow key
  Next
End Sub

Sub ReadAndShow(key)
  Dim item, index
  Set item = txm.Items.Item(key)
  If Not txm.ReadTxm(item, True) Then
    WScript.Echo key & "  " & item.Caption & ": " & Outcome
    Exit Sub
  End If
  For index = 1 To item.Variables.Count
    WScript.Echo Fit(key, 5) & Fit(item.Caption(index), 24) & Fit(Shown(item, index, kOwnUnit), 26) & _
        InNextUnit(item, index)
  Next
End Sub

' A packed record is a time and an error number; its text names the error.
Function Shown(item, index, unit)
  If item.DataType(index) = kPackedRecord Then
    Shown = codes.CPackToStr(item.Value(index), item, txm.Lists)
    Exit Function
  End If
  Shown = utility.pvCStr(txm.ItemValue(item, index, unit, kOwnDecimals, kShowValueAndUnit))
End Function

' Once more in the next unit of its dimension, when there is another one.
Function InNextUnit(item, index)
  Dim units, unit
  InNextUnit = ""
  If item.Variables.Item(index).ListID > 0 Or txm.ItemDimID(item, index) = kDimensionNone Then Exit Function
  Set units = txm.Dimensions.Item(txm.ItemDimID(item, index)).Units
  If units.Count < 2 Then Exit Function
  unit = item.Variables.Item(index).UnitID Mod units.Count + 1
  InNextUnit = Shown(item, index, unit)
End Function

Function Fit(text, width)
  Fit = text & Space(1)
  If Len(text) < width Then Fit = text & Space(width - Len(text))
End Function

' Why the last exchange failed: what the transmitter answered, or what went wrong before.
Function Outcome()
  If txm.ComAnswerError <> 0 Then
    Outcome = txm.ComAnswerErrorText
  Else
    Outcome = "communication error " & txm.ComError
  End If
End Function

' --- Writing ----------------------------------------------------------------------------------------

Sub WriteSome()
  Heading "Writing"
  Change "30", 1, 25
  EnterPassword kWrongPassword
  EnterPassword kTechnicianPassword
  Change "30", 1, 25
  Change "32", 1, 4.5
  Change "37", 1, 2
  Change "70", 3, 25
  Change "110", 1, "FT-1203 NORTH"
  Change "30", 1, kOutOfLimits
  Change "35", 1, 1.04
  EnterPassword ""
End Sub

' The value is in the unit in which the item is shown. A refusal would open a message box, so the
' levels are compared before.
Sub Change(key, index, value)
  Dim item, before
  Set item = txm.Items.Item(key)
  If Not txm.IsWriteable(item) Then
    WScript.Echo utility.pvString(kTextWriteProtected) & " " & key & ", " & item.Caption(index) & _
        ". " & utility.pvString(kTextNeededLevel) & " " & txm.GetWritePWLevel(item)
    Exit Sub
  End If
  If Not txm.ReadTxm(item, True) Then
    WScript.Echo key & ", " & item.Caption(index) & ": " & Outcome
    Exit Sub
  End If
  before = Shown(item, index, kOwnUnit)
  txm.ItemValue(item, index) = value
  If txm.WriteTxm(item, True) Then
    txm.ReadTxm item
    WScript.Echo key & ", " & item.Caption(index) & ": " & before & " -> " & Shown(item, index, kOwnUnit)
  Else
    CountRefusal
    WScript.Echo key & ", " & item.Caption(index) & ": " & value & " refused: " & Outcome
  End If
End Sub

' A write that got no answer was not refused.
Sub CountRefusal
  If txm.ComError = 0 Then refusals = refusals + 1
End Sub

' Writing the password item moves the level of the transmitter.
Sub EnterPassword(text)
  Dim item, answer
  Set item = txm.Items.Item(kEnterPassword)
  item.Value(1) = text
  answer = "accepted"
  If Not txm.WriteTxm(item, True) Then
    answer = "refused"
    CountRefusal
  End If
  WScript.Echo item.Caption & " " & String(Len(text), "*") & ": " & answer & ", level " & txm.Password
End Sub

' --- Audit ------------------------------------------------------------------------------------------

Sub ShowHistory(folder)
  Dim path, stream
  path = files.BuildPath(folder, "Historian.csv")
  Heading "Historian.csv"
  If Not files.FileExists(path) Then Fail "There is no file " & path & "."
  Set stream = files.OpenTextFile(path, kForReading)
  Do Until stream.AtEndOfStream
    WScript.Echo stream.ReadLine
  Loop
  stream.Close
End Sub

' --- Line -------------------------------------------------------------------------------------------

' At a wrong baud rate the transmitter keeps silent: these time-outs are no faults.
Sub ShowLine()
  Heading "Line"
  WScript.Echo "Search for the baud rate: " & searchReport
  WScript.Echo "With reading and writing: " & txm.GetMessage
  WScript.Echo "Refused writes: " & refusals & ", intended: " & kIntendedRefusals & _
      " (a wrong password, a value out of limits)"
End Sub
