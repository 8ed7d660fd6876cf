// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Connects to a Fluxor transmitter, reads and writes items and shows the audit file that resulted.
//
//   cscript //nologo read_write.js <settings name> <history folder> <language index>
//
// <settings name> is the common name of the settings files, such as C:\data\fluxor. The transmitter is
// expected at address 1 of COM1. Needs pvItems32 and Fluxor.Server registered. Ends with DONE; anything
// wrong ends it with exit code 1.

// Scripts see no constants of a type library, so those in use are named here.
var FOR_READING = 1;
var SHOW_VALUE_AND_UNIT = 2;
var OWN_UNIT = -1;
var OWN_DECIMALS = -2;
var HISTORY_SILENT = 1;
var HISTORY_FOLDER = 8;
var PACKED_RECORD = 16;
var DIMENSION_NONE = 17;
var TEXT_WRITE_PROTECTED = 1101;
var TEXT_NEEDED_LEVEL = 1102;

var ENTER_PASSWORD = "140";
var TECHNICIAN_PASSWORD = "2222";
var WRONG_PASSWORD = "guess";
var OUT_OF_LIMITS = 0;

// Writes that the transmitter is meant to refuse, and those that it refused.
var INTENDED_REFUSALS = 2;
var refusals = 0;

var files, utility, codes, txm, searchReport;

try {
  main();
  WScript.Echo("DONE");
} catch (error) {
  WScript.Echo(error.message ? "Error: " + error.message : error);
  WScript.Quit(1);
}

function main() {
  var arguments = WScript.Arguments;
  if (arguments.length != 3) {
    throw "Usage: read_write.js <settings name> <history folder> <language index>";
  }
  files = new ActiveXObject("Scripting.FileSystemObject");
  utility = new ActiveXObject("pvItems32.CUtility");
  codes = new ActiveXObject("pvItems32.CComUtility");
  utility.Languages.ActiveLanguageID = utility.pvCInt(arguments.Item(2));
  utility.AppDirectory(HISTORY_FOLDER) = arguments.Item(1);

  makeTransmitter(arguments.Item(0));
  connect();
  readSome();
  writeSome();
  showHistory(arguments.Item(1));
  showLine();
}

function heading(text) {
  WScript.Echo("");
  WScript.Echo(text);
  WScript.Echo(new Array(text.length + 1).join("-"));
}

// --- Connection --------------------------------------------------------------------------------------

function makeTransmitter(settings) {
  txm = new ActiveXObject("pvItems32.CTxm");
  txm.Server = new ActiveXObject("Fluxor.Server");
  txm.Name = "Cooling water";
  txm.ComPort = 1;
  txm.ComSettings = "9600,n,8,1";
  txm.Historian = HISTORY_SILENT;
  txm.HistorianTechName = "M. Keller";
  txm.HistorianComment = "Commissioning";
  if (!txm.LoadSettings(settings)) throw "Cannot load the settings files " + settings + ".*";
}

// The server tries the other baud rates too, and the transmitter takes over what it found.
function connect() {
  heading(txm.NameFormatted());
  if (!txm.AutoConnect(true)) throw "There is no transmitter at COM" + txm.ComPort + ".";
  searchReport = txm.GetMessage();
  WScript.Echo("COM" + txm.ComPort + ":" + txm.ComSettings + "  software " + txm.Version + "  " +
               txm.Items.Count + " items");
}

// --- Reading -----------------------------------------------------------------------------------------

// With its parent: the item that carries its unit is read first.
function readSome() {
  heading("Reading");
  var keys = ["1", "2", "4", "8", "20", "21", "23", "30", "32", "37", "70", "110", "131", "133"];
  for (var i = 0; i < keys.length; i++) readAndShow(keys[i]);
}

function readAndShow(key) {
  var item = txm.Items.Item(key);
  if (!txm.ReadTxm(item, true)) {
    WScript.Echo(key + "  " + item.Caption(1) + ": " + outcome());
    return;
  }
  for (var index = 1; index <= item.Variables.Count; index++) {
    WScript.Echo(fit(key, 5) + fit(item.Caption(index), 24) + fit(shown(item, index, OWN_UNIT), 26) +
                 inNextUnit(item, index));
  }
}

// A packed record is a time and an error number; its text names the error.
function shown(item, index, unit) {
  if (item.DataType(index) == PACKED_RECORD) return codes.CPackToStr(item.Value(index), item, txm.Lists);
  return utility.pvCStr(txm.ItemValue(item, index, unit, OWN_DECIMALS, SHOW_VALUE_AND_UNIT));
}

// Once more in the next unit of its dimension, when there is another one.
function inNextUnit(item, index) {
  var variable = item.Variables.Item(index);
  if (variable.ListID > 0 || txm.ItemDimID(item, index) == DIMENSION_NONE) return "";
  var count = txm.Dimensions.Item(txm.ItemDimID(item, index)).Units.Count;
  return count < 2 ? "" : shown(item, index, variable.UnitID % count + 1);
}

function fit(text, width) {
  return text + new Array(Math.max(width - text.length, 1) + 1).join(" ");
}

// Why the last exchange failed: what the transmitter answered, or what went wrong before.
function outcome() {
  return txm.ComAnswerError ? txm.ComAnswerErrorText : "communication error " + txm.ComError;
}

// --- Writing -----------------------------------------------------------------------------------------

function writeSome() {
  heading("Writing");
  change("30", 1, 25);
  enterPassword(WRONG_PASSWORD);
  enterPassword(TECHNICIAN_PASSWORD);
  change("30", 1, 25);
  change("32", 1, 4.5);
  change("37", 1, 2);
  change("70", 3, 25);
  change("110", 1, "FT-1203 NORTH");
  change("30", 1, OUT_OF_LIMITS);
  change("35", 1, 1.04);
  enterPassword("");
}

// The value is in the unit in which the item is shown. A refusal would open a message box, so the
// levels are compared before.
function change(key, index, value) {
  var item = txm.Items.Item(key);
  var name = key + ", " + item.Caption(index);
  if (!txm.IsWriteable(item)) {
    WScript.Echo(utility.pvString(TEXT_WRITE_PROTECTED) + " " + name + ". " +
                 utility.pvString(TEXT_NEEDED_LEVEL) + " " + txm.GetWritePWLevel(item));
    return;
  }
  if (!txm.ReadTxm(item, true)) {
    WScript.Echo(name + ": " + outcome());
    return;
  }
  var before = shown(item, index, OWN_UNIT);
  txm.ItemValue(item, index) = value;
  if (txm.WriteTxm(item, true)) {
    txm.ReadTxm(item);
    WScript.Echo(name + ": " + before + " -> " + shown(item, index, OWN_UNIT));
  } else {
    countRefusal();
    WScript.Echo(name + ": " + value + " refused: " + outcome());
  }
}

// A write that got no answer was not refused.
function countRefusal() {
  if (!txm.ComError) refusals++;
}

// Writing the password item moves the level of the transmitter.
function enterPassword(text) {
  var item = txm.Items.Item(ENTER_PASSWORD);
  item.Value(1) = text;
  var accepted = txm.WriteTxm(item, true);
  if (!accepted) countRefusal();
  WScript.Echo(item.Caption(1) + " " + new Array(text.length + 1).join("*") + ": " +
               (accepted ? "accepted" : "refused") + ", level " + txm.Password);
}

// --- Audit -------------------------------------------------------------------------------------------

function showHistory(folder) {
  var path = files.BuildPath(folder, "Historian.csv");
  heading("Historian.csv");
  if (!files.FileExists(path)) throw "There is no file " + path + ".";
  var stream = files.OpenTextFile(path, FOR_READING);
  while (!stream.AtEndOfStream) WScript.Echo(stream.ReadLine());
  stream.Close();
}

// --- Line --------------------------------------------------------------------------------------------

// At a wrong baud rate the transmitter keeps silent: these time-outs are no faults.
function showLine() {
  heading("Line");
  WScript.Echo("Search for the baud rate: " + searchReport);
  WScript.Echo("With reading and writing: " + txm.GetMessage());
  WScript.Echo("Refused writes: " + refusals + ", intended: " + INTENDED_REFUSALS +
               " (a wrong password, a value out of limits)");
}
