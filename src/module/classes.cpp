// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/module.h"
#include "platform/letter_case.h"

namespace pv {

class CPassword;
class CPasswords;
class CDList;
class CDListMember;
class CDListMembers;
class CDLists;
class CItem;
class CItems;
class CVariable;
class CVariables;
class CVerItem;
class CVerItems;
class CVersion;
class CVersions;
class CComDetail;
class CComHistory;
class CComUtility;
class CProtocol;
class CProtocols;
class CTxm;
class CTxmEvents;
class CDimension;
class CDimensions;
class CUnit;
class CUnits;
class CDirEntry;
class CDirectory;
class CError;
class CFile;
class CFunction;
class CFunctions;
class CInputBox;
class CLanguage;
class CLanguages;
class CStatistics;
class CUtility;
class Cerrors;

const Library& library() {
  static const ClassEntry classes[] = {
      class_entry<CPassword>(),    class_entry<CPasswords>(),    class_entry<CDList>(),
      class_entry<CDListMember>(), class_entry<CDListMembers>(), class_entry<CDLists>(),
      class_entry<CItem>(),        class_entry<CItems>(),        class_entry<CVariable>(),
      class_entry<CVariables>(),   class_entry<CVerItem>(),      class_entry<CVerItems>(),
      class_entry<CVersion>(),     class_entry<CVersions>(),     class_entry<CComDetail>(),
      class_entry<CComHistory>(),  class_entry<CComUtility>(),   class_entry<CProtocol>(),
      class_entry<CProtocols>(),   class_entry<CTxm>(),          class_entry<CTxmEvents>(),
      class_entry<CDimension>(),   class_entry<CDimensions>(),   class_entry<CUnit>(),
      class_entry<CUnits>(),       class_entry<CDirEntry>(),     class_entry<CDirectory>(),
      class_entry<CError>(),       class_entry<CFile>(),         class_entry<CFunction>(),
      class_entry<CFunctions>(),   class_entry<CInputBox>(),     class_entry<CLanguage>(),
      class_entry<CLanguages>(),   class_entry<CStatistics>(),   class_entry<CUtility>(),
      class_entry<Cerrors>(),
  };
  static const Library description{L"pvItems32", classes, key_case()};
  return description;
}

}  // namespace pv
