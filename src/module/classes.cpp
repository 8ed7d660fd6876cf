#include "classes/access/CPassword.h"
#include "classes/access/CPasswords.h"
#include "classes/items/CDList.h"
#include "classes/items/CDListMember.h"
#include "classes/items/CDListMembers.h"
#include "classes/items/CDLists.h"
#include "classes/items/CItem.h"
#include "classes/items/CItems.h"
#include "classes/items/CVariable.h"
#include "classes/items/CVariables.h"
#include "classes/items/CVerItem.h"
#include "classes/items/CVerItems.h"
#include "classes/items/CVersion.h"
#include "classes/items/CVersions.h"
#include "classes/txm/CComDetail.h"
#include "classes/txm/CComHistory.h"
#include "classes/txm/CComUtility.h"
#include "classes/txm/CProtocol.h"
#include "classes/txm/CProtocols.h"
#include "classes/txm/CTxm.h"
#include "classes/txm/CTxmEvents.h"
#include "classes/units/CDimension.h"
#include "classes/units/CDimensions.h"
#include "classes/units/CUnit.h"
#include "classes/units/CUnits.h"
#include "classes/utility/CDirEntry.h"
#include "classes/utility/CDirectory.h"
#include "classes/utility/CError.h"
#include "classes/utility/CFile.h"
#include "classes/utility/CFunction.h"
#include "classes/utility/CFunctions.h"
#include "classes/utility/CInputBox.h"
#include "classes/utility/CLanguage.h"
#include "classes/utility/CLanguages.h"
#include "classes/utility/CStatistics.h"
#include "classes/utility/CUtility.h"
#include "classes/utility/Cerrors.h"
#include "com/module.h"
#include "platform/letter_case.h"

namespace pv {

const Library& library() {
  static constexpr ClassEntry classes[] = {
      CPassword::entry(),     CPasswords::entry(), CDList::entry(),      CDListMember::entry(),
      CDListMembers::entry(), CDLists::entry(),    CItem::entry(),       CItems::entry(),
      CVariable::entry(),     CVariables::entry(), CVerItem::entry(),    CVerItems::entry(),
      CVersion::entry(),      CVersions::entry(),  CComDetail::entry(),  CComHistory::entry(),
      CComUtility::entry(),   CProtocol::entry(),  CProtocols::entry(),  CTxm::entry(),
      CTxmEvents::entry(),    CDimension::entry(), CDimensions::entry(), CDirEntry::entry(),
      CDirectory::entry(),    CError::entry(),     CFile::entry(),       CFunction::entry(),
      CFunctions::entry(),    CInputBox::entry(),  CLanguage::entry(),   CLanguages::entry(),
      CStatistics::entry(),   CUnit::entry(),      CUnits::entry(),      CUtility::entry(),
      Cerrors::entry(),
  };
  static const Library description{L"pvItems32", classes, key_case()};
  return description;
}

}  // namespace pv
