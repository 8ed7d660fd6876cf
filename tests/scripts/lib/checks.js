// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What comes before every JScript test: checks of one case, and its result line.

var suite = "";
var failedChecks = 0;

function check(actual, expected) {
  if (actual === expected) return;
  failedChecks += 1;
  WScript.Echo("  is " + typeof actual + " " + actual + ", expected " + expected);
}

// The message contains the word, when one is given.
function checkError(number, action, word) {
  var caught = 0, message = "";
  try {
    action();
  } catch (error) {
    caught = error.number & 0xFFFF;
    message = error.message;
  }
  check(caught, number);
  if (word) check(message.indexOf(word) >= 0, true);
}

function test(name, body) {
  failedChecks = 0;
  try {
    body();
  } catch (error) {
    failedChecks += 1;
    WScript.Echo("  " + error.number + " " + error.message);
  }
  if (failedChecks === 0) {
    WScript.Echo("[       OK ] " + suite + "." + name);
  } else {
    WScript.Echo("[  FAILED  ] " + suite + "." + name + " (0 ms)");
  }
}

var files = new ActiveXObject("Scripting.FileSystemObject");
var exampleData = WScript.Arguments.Item(0) + "\\";

// The name of a file that does not exist yet.
function temporaryName() {
  return files.BuildPath(files.GetSpecialFolder(2), files.GetTempName());
}
