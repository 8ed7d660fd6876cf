' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Creates an object of each class that is named, and tells the kind of the script host.
Option Explicit
Dim i, object
For i = 0 To WScript.Arguments.Count - 1
  Set object = CreateObject("pvItems32." & WScript.Arguments.Item(i))
Next
WScript.Echo CreateObject("WScript.Shell").ExpandEnvironmentStrings("%PROCESSOR_ARCHITECTURE%")
