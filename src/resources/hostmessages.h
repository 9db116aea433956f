// The messages that the library reports in the host's name (facilities 0x104 and 0x137): the table of the fallback
// module.
#pragma once

#include "resources/messagerow.h"

namespace connectdialog {

inline constexpr MessageRow kHostMessages[] = {
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
    {0xE1370001, u"无法使用键盘映射文件“%1”：\r\n%2"},
    // Character maps of a terminal: the file's name.
    {0xE137000A, u"无法打开字符映射文件“%1”。"},
};

}  // namespace connectdialog
