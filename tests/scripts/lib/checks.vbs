' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' What comes before every VBScript test: checks of one case, and its result line.
Option Explicit

Dim suite, failed_checks
failed_checks = 0

Sub Check(actual, expected)
  Dim same
  same = False
  If VarType(actual) = VarType(expected) Then same = (actual = expected)
  If Not same Then
    failed_checks = failed_checks + 1
    WScript.Echo "  is " & TypeName(actual) & " " & actual & ", expected " & TypeName(expected) & " " & expected
  End If
End Sub

' The error of the statement before, as a script reads it.
Sub CheckError(number)
  Dim given
  given = Err.Number
  Err.Clear
  Check CLng(given), CLng(number)
End Sub

Sub CheckErrorText(number, source, word)
  Dim given_source, given_text
  given_source = Err.Source
  given_text = Err.Description
  CheckError number
  Check given_source, source
  Check InStr(given_text, word) > 0, True
End Sub

Sub EndOf(name)
  If failed_checks = 0 Then
    WScript.Echo "[       OK ] " & suite & "." & name
  Else
    WScript.Echo "[  FAILED  ] " & suite & "." & name & " (0 ms)"
  End If
  failed_checks = 0
End Sub

' A number text as the user's locale writes it.
Function Decimal(text)
  Decimal = Replace(text, ".", Mid(CStr(1.5), 2, 1))
End Function

Dim files, example_data
Set files = CreateObject("Scripting.FileSystemObject")
example_data = WScript.Arguments.Item(0) & "\"

' The name of a file that does not exist yet.
Function TemporaryName()
  TemporaryName = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName())
End Function
