// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

program Client;

{ A host in Pascal, early bound by the unit that comes out of the contract. It makes objects, works with
  them, changes an argument by reference, listens to an event, meets an error and enumerates a collection;
  each result is compared. Ends with DONE; anything wrong is told before and ends it with exit code 1. }

{$mode delphi}
{$apptype console}

uses
  Windows, ActiveX, ComObj, SysUtils, Variants, pvItems32_TLB;

var
  Failures: Integer = 0;

procedure Expect(Holds: Boolean; const What: string);
begin
  if Holds then
    Exit;
  WriteLn('client.pas: ', What);
  Inc(Failures);
end;

type
  { Listens to the events of CLanguages. }
  TListener = class(TInterfacedObject, IUnknown, IDispatch)
  public
    Language: Integer;
    function QueryInterface(constref Iid: TGUID; out Found): HResult; stdcall;
    function GetTypeInfoCount(out Count: Longint): HResult; stdcall;
    function GetTypeInfo(Index, Locale: Longint; out Info): HResult; stdcall;
    function GetIDsOfNames(const Iid: TGUID; Names: Pointer; Count, Locale: Longint;
      Ids: Pointer): HResult; stdcall;
    function Invoke(Member: Longint; const Iid: TGUID; Locale: Longint; Flags: Word;
      var Parameters; Result_, Exception_, Argument: Pointer): HResult; stdcall;
  end;

function TListener.QueryInterface(constref Iid: TGUID; out Found): HResult; stdcall;
begin
  if IsEqualGUID(Iid, DIID___CLanguages) then
    Result := inherited QueryInterface(IDispatch, Found)
  else
    Result := inherited QueryInterface(Iid, Found);
end;

function TListener.GetTypeInfoCount(out Count: Longint): HResult; stdcall;
begin
  Count := 0;
  Result := S_OK;
end;

function TListener.GetTypeInfo(Index, Locale: Longint; out Info): HResult; stdcall;
begin
  Result := E_NOTIMPL;
end;

function TListener.GetIDsOfNames(const Iid: TGUID; Names: Pointer; Count, Locale: Longint;
  Ids: Pointer): HResult; stdcall;
begin
  Result := E_NOTIMPL;
end;

function TListener.Invoke(Member: Longint; const Iid: TGUID; Locale: Longint; Flags: Word;
  var Parameters; Result_, Exception_, Argument: Pointer): HResult; stdcall;
begin
  with TDispParams(Parameters) do
  begin
    Expect((Member = 1) and (cArgs = 1), 'one event with one argument');
    Language := rgvarg^[0].lVal;
  end;
  Result := S_OK;
end;

procedure UseItem(const Items: _CItems);
var
  Item, Found: _CItem;
  Late: OleVariant;
  Key: WideString;
begin
  Key := '7';
  Item := Items.Add(Key, 7, False, 0, False, False, 0.5, 4, nil);
  Item.Variables.Add('', 'Flow', '', '', 0, 0, 0, 2, 1.0, '', edtFloat);
  Item.Value[1] := 3.5;
  Found := Items[Key];
  Expect(Found = Item, 'the item is found by its key');
  Expect(Found.Value[1] = 3.5, 'a value comes back');
  Expect(Found.Caption[1] = 'Flow', 'a text comes back');
  Found.Unit_[1] := 4;
  Expect(_CItemDisp(Found).Unit_[1] = 4, 'members are called by number');
  Late := Found;
  Expect(Late.ItemID = 7, 'members are called by name');
end;

procedure Enumerate(const Items: _CItems);
var
  Members: IEnumVARIANT;
  Member: OleVariant;
  Fetched: ULONG;
  Sum: Integer;
begin
  Items.Add('30', 30, False, 0, False, False, 0.5, 4, nil);
  Members := Items.NewEnum as IEnumVARIANT;
  Sum := 0;
  while Members.Next(1, Member, Fetched) = S_OK do
    Sum := Sum + Member.ItemID;
  Expect(Sum = 7 + 30, 'all items are enumerated');
end;

procedure ChangeArgument;
var
  Utility: _CComUtility;
  Data: OleVariant;
begin
  Utility := CoCComUtility.Create;
  Data := 'ABCDEF';
  Expect(Utility.GetChunk(Data, 2) = 'AB', 'a chunk is cut off');
  Expect(Data = 'CDEF', 'an argument is changed');
end;

procedure HearEvents;
var
  Listener: TListener;
  Kept: IDispatch;
  Utility: _CUtility;
  Cookie: DWORD;
begin
  Listener := TListener.Create;
  Kept := Listener;
  Utility := CoCUtility.Create;
  Cookie := 0;
  InterfaceConnect(Utility.Languages, DIID___CLanguages, Kept, Cookie);
  Utility.Languages.ActiveLanguageID := 3;
  Expect(Listener.Language = 3, 'an event comes');
  Expect(Utility.pvString[pvStrCancel] = 'Abbrechen', 'texts are in the active language');
  InterfaceDisconnect(Utility.Languages, DIID___CLanguages, Cookie);
end;

procedure MeetError;
const
  NoSuchPosition = Integer($800A0009);
begin
  try
    CoCVariables.Create.Item[7];
    Expect(False, 'an error is raised');
  except
    on Error: EOleException do
      Expect(Error.ErrorCode = NoSuchPosition, 'its code is ' + IntToHex(Error.ErrorCode, 8));
  end;
end;

var
  Items: _CItems;

begin
  CoInitialize(nil);
  Items := CoCItems.Create;
  UseItem(Items);
  Enumerate(Items);
  Items := nil;
  ChangeArgument;
  HearEvents;
  MeetError;
  CoUninitialize;
  if Failures > 0 then
    Halt(1);
  WriteLn('32 bits: DONE');
end.
