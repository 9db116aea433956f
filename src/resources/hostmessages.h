// The messages that the library reports in the host's name (facilities 0x104, 0x10A and 0x137): the table of the
// fallback module.
#pragma once

#include "resources/messagerow.h"

namespace connectdialog {

inline constexpr MessageRow kHostMessages[] = {
    // Descriptions of menus and toolbars: the line, then what menutoolbar/menureports.h tells. Errors follow below.
    {0xA10A0008, u"第 %1 行：没有定义名为“%2”的快捷键。"},
    {0xA10A0009, u"第 %1 行：没有定义名为“%2”的字符串。"},
    {0xA10A000A, u"第 %1 行：此行的位置不对，或者内容不完整。"},
    {0xA10A000B, u"第 %1 行：功能“%2”无法识别。"},
    {0xA10A000C, u"第 %1 行：无法加载图像“%2” (%3)"},
    {0xA10A000D, u"第 %1 行：没有指定图像。"},
    {0xA10A000E, u"第 %1 行：找不到脚本文件“%2”。"},
    {0xA10A000F, u"第 %1 行：缺少参数 (%2)。"},
    {0xA10A0010, u"第 %1 行：字体已经指定过，以此行为准。"},
    // Keymap files: the file's name, the errors that were found. Files that cannot be used follow at the end.
    {0xA1370002, u"键盘映射文件“%1”有错误，这些行未被完整读取：\r\n%2"},
    // Modules that are loaded at run time: the module's path, the system's error text.
    {0xE104003E, u"无法加载模块“%1”：%2"},
    {0xE104003F, u"模块“%1”缺少所需的函数：%2"},
    // Values that are kept enciphered: the value's name, the system's error text.
    {0xE1040040, u"“%1”的内容没有加密。"},
    {0xE1040045, u"无法加密“%1”：%2"},
    {0xE1040046, u"无法解密“%1”：%2"},
    {0xE1040047, u"“%1”的加密内容不完整。"},
    // Names of trace files: the sequence that is not known.
    {0xE1040065, u"文件名中的“%1”无法识别。"},
    {0xE1040066, u"文件名以单独的“%%”结尾。"},
    // Values that a script or an import reads and writes: the value's name.
    {0xE104006A, u"设置“%1”不支持此操作。"},
    {0xE104006B, u"设置“%1”不接受这种类型的值。"},
    {0xE10A0002, u"菜单描述文件“%1”中没有可用的内容。"},
    {0xE10A0003, u"第 %1 行：重复定义了同名的快捷键。"},
    {0xE10A0004, u"第 %1 行：重复定义了同名的字符串。"},
    {0xE10A0005, u"第 %1 行：重复定义了菜单或工具栏“%2”。"},
    {0xE10A0006, u"第 %1 行：关键字的位置不对，或者缺少 END。"},
    {0xE10A0007, u"第 %1 行：文件“%2”中的引号不成对。"},
    {0xE1370001, u"无法使用键盘映射文件“%1”：\r\n%2"},
    // Character maps of a terminal: the file's name.
    {0xE137000A, u"无法打开字符映射文件“%1”。"},
};

}  // namespace connectdialog
