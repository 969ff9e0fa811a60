/// \file
/// What a user does with a control, and what screen readers hear, written as texts.
#pragma once

#include "control_kit.h"

#include <sstream>

/// Words for a key with its modifiers ("k39 k39+3"), for characters ("tab"), and for the mouse at a point (down, move,
/// up, click, double click: "d97,10 m107,10 u107,10 c30,10 b15,10"), until the control ends.
inline void Play(CWnd& control, const std::string& script)
{
    static const std::map<char, UINT> kMessages = {
        {'d', WM_LBUTTONDOWN}, {'m', WM_MOUSEMOVE}, {'u', WM_LBUTTONUP}, {'b', WM_LBUTTONDBLCLK}};
    const HWND window = control.m_hWnd;
    std::istringstream words(script);
    for (std::string word; words >> word && ::IsWindow(window);) {
        int x = 0, y = 0;
        std::sscanf(word.c_str() + 1, "%d%*c%d", &x, &y);
        if (word[0] == 'k')
            PressKey(control, static_cast<UINT>(x), y);
        else if (word[0] == 't')
            std::for_each(word.begin() + 1, word.end(), [&](char c) { control.SendMessage(WM_CHAR, BYTE(c)); });
        else if (word[0] == 'c')
            Click(control, {x, y});
        else
            SendMouse(control, kMessages.at(word[0]), {x, y});
    }
}

/// The events heard: "focus 3, value 0".
inline std::string HeardText()
{
    static const std::map<DWORD, std::string> kNames = {{EVENT_OBJECT_FOCUS, "focus "},
                                                        {EVENT_OBJECT_SELECTION, "selection "},
                                                        {EVENT_OBJECT_STATECHANGE, "state "},
                                                        {EVENT_OBJECT_NAMECHANGE, "name "},
                                                        {EVENT_OBJECT_DESCRIPTIONCHANGE, "description "},
                                                        {EVENT_OBJECT_VALUECHANGE, "value "}};
    std::string all;
    for (const auto& [event, part] : Events::Heard())
        all += (all.empty() ? "" : ", ") + kNames.at(event) + std::to_string(part);
    return all;
}
