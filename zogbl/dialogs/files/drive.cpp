#include "drive.h"

#include "place_list.h"

CString Drive::GetName() const { return DriveName(GetRoot(), m_isKnown ? m_work->GetPlace() : NetworkPlace()); }
