' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Creates an object of each class that is named, by its ProgID, and tells which build served it.
Option Explicit
Dim i, object
For i = 0 To WScript.Arguments.Count - 1
  Set object = CreateObject("pvItems32." & WScript.Arguments.Item(i))
Next
Set object = CreateObject("pvItems32.CUtility")
WScript.Echo object.pvItem32Version
