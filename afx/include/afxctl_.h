/// \file
/// Application framework: controls of the system. Included by afxwin.h.
///
/// Most operations send one message and answer what the system answers; counts are in items, characters of texts in
/// bytes, numbers of items begin with 0. A control is created as a child of pParentWnd; without one Create fails.
///
/// The virtual operations of owner-drawn controls are called for messages that the parent gets; its own handlers of
/// them come first. A control without object at that moment is not asked: of dialogs the items of a fixed height are
/// measured before SubclassDlgItem can be called, so use SetItemHeight then.
#pragma once

#include <afxbox_.h> // list boxes, combo boxes
#include <afxbut_.h> // static texts, buttons, scroll bars
#include <afxedt_.h> // edit controls
