// The messages of the library itself (facility 0x109).
#pragma once

#include "resources/messagerow.h"

namespace connectdialog {

inline constexpr MessageRow kLibraryMessages[] = {
    {0x61090001, u"\"%1\" 未找到。"},
    {0x61090002,
     u"你将编辑 %1 个会话的设置。\r\n"
     u"第一个会话的设置将显示在会话属性对话框中。\r\n"
     u"只有改变的设置才会被应用到\r\n"
     u"所选的 %1 个会话。"},
    {0xE1090003, u"以下会话正在使用中，不能删除：\r\n%1"},
    {0xE1090004, u"无法显示协议 %1 的设置页。"},
};

}  // namespace connectdialog
