#include "access/CPassword.h"
#include "access/CPasswords.h"
#include "com/module.h"
#include "items/CDList.h"
#include "items/CDListMember.h"
#include "items/CDListMembers.h"
#include "items/CDLists.h"
#include "items/CItem.h"
#include "items/CItems.h"
#include "items/CVariable.h"
#include "items/CVariables.h"
#include "items/CVerItem.h"
#include "items/CVerItems.h"
#include "items/CVersion.h"
#include "items/CVersions.h"
#include "txm/CComDetail.h"
#include "txm/CComHistory.h"
#include "txm/CComUtility.h"
#include "txm/CProtocol.h"
#include "txm/CProtocols.h"
#include "txm/CTxm.h"
#include "txm/CTxmEvents.h"
#include "util/CDimension.h"
#include "util/CDimensions.h"
#include "util/CDirEntry.h"
#include "util/CDirectory.h"
#include "util/CError.h"
#include "util/CFile.h"
#include "util/CFunction.h"
#include "util/CFunctions.h"
#include "util/CInputBox.h"
#include "util/CLanguage.h"
#include "util/CLanguages.h"
#include "util/CStatistics.h"
#include "util/CUnit.h"
#include "util/CUnits.h"
#include "util/CUtility.h"
#include "util/Cerrors.h"

namespace pv {

std::span<const ClassEntry> class_table() {
  static constexpr ClassEntry table[] = {
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
  return table;
}

}  // namespace pv
