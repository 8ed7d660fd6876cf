// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A transmitter whose server, host and modem are objects of this script. Where such an object has
// no object to give it has null; its members may be values or functions.

suite = "TransmitterJs";

function newTransmitter(server) {
  var txm = new ActiveXObject("pvItems32.CTxm");
  txm.Server = server;
  return txm;
}

function newServer() {
  return {
    Version: "",
    TypeName: "Scripted",
    Items: new ActiveXObject("pvItems32.CItems"),
    Protocols: new ActiveXObject("pvItems32.CProtocols"),
    AutoConnect: function () { return true; }
  };
}

test("NullStandsForNoObject", function () {
  var txm = newTransmitter({
    Version: "", Items: null, Dimensions: null, Lists: null, Functions: null, DefaultItem: null,
    Picture: function () { return null; }
  });
  check(txm.Items, null);
  check(txm.Dimensions, null);
  check(txm.Lists, null);
  check(txm.Functions, null);
  check(txm.DefaultItem, null);
  check(txm.PictureTransmitter, null);
});

test("NullIsNoModem", function () {
  var txm = newTransmitter(newServer());
  txm.ComPort = 9;
  txm.Parent = { Modem: null };
  check(txm.CheckModemConnection(), false);
  check(txm.AutoConnect(), false);
});

test("NullIsNoPortObject", function () {
  var server = newServer();
  server.GetComObject = function () { return null; };
  checkError(91, function () { newTransmitter(server).AutoConnect(); });
});

test("PropertiesMayBeFunctions", function () {
  var server = newServer(), items = server.Items, protocols = server.Protocols;
  server.Items = function () { return items; };
  server.Protocols = function () { return protocols; };
  server.TypeName = function () { return this.Version + " called"; };
  server.ComError = function () { return 7; };
  var txm = newTransmitter(server);
  txm.Version = "V1";
  check(txm.Items.Count, 0);
  check(txm.TxmTypeName, "V1 called");
  check(txm.ComError, 7);
  txm.ComPort = 9;
  txm.Parent = { Modem: function () { return { Connected: function () { return true; } }; } };
  check(txm.CheckModemConnection(), true);
});

test("ThePortObjectMayBeAValueOrAnAnswer", function () {
  var server = newServer();
  server.GetComObject = { Name: "COM1", Settings: "9600,n,8,1" };
  var txm = newTransmitter(server);
  check(txm.AutoConnect(), true);
  check(txm.ComSettings, "9600,n,8,1");
  server.GetComObject = function () { return { Name: "ActiveHART1", cComMode: 2 }; };
  check(txm.AutoConnect(), true);
  check(txm.ComSettings, "19200,n,8,1");
});

test("ErrorsOfFunctionsReachTheCaller", function () {
  var server = newServer();
  server.GetComObject = function () { throw new Error(0x800A0000 + 42, "no port"); };
  checkError(42, function () { newTransmitter(server).AutoConnect(); });
  server.GetComObject = function () { var port = {}; return port(); };
  checkError(5002, function () { newTransmitter(server).AutoConnect(); });
  server.TypeName = function () { throw new Error(0x800A0000 + 43, "no name"); };
  checkError(43, function () { return newTransmitter(server).TxmTypeName; });
});

WScript.Echo("DONE");
