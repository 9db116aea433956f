// The names of the platform's virtual keys.
#pragma once

#include <cstdint>
#include <iterator>
#include <string_view>

namespace connectdialog {

struct KeyRow {
    std::u16string_view name;
    std::uint32_t code;
};

/// Sorted by name.
inline constexpr KeyRow kStandardKeys[] = {
    {u"VK_0", 0x30},        {u"VK_1", 0x31},       {u"VK_2", 0x32},         {u"VK_3", 0x33},
    {u"VK_4", 0x34},        {u"VK_5", 0x35},       {u"VK_6", 0x36},         {u"VK_7", 0x37},
    {u"VK_8", 0x38},        {u"VK_9", 0x39},       {u"VK_A", 0x41},         {u"VK_ADD", 0x6B},
    {u"VK_APPS", 0x5D},     {u"VK_B", 0x42},       {u"VK_BACK", 0x08},      {u"VK_C", 0x43},
    {u"VK_CANCEL", 0x03},   {u"VK_CAPITAL", 0x14}, {u"VK_CLEAR", 0x0C},     {u"VK_CONTROL", 0x11},
    {u"VK_D", 0x44},        {u"VK_DECIMAL", 0x6E}, {u"VK_DELETE", 0x2E},    {u"VK_DIVIDE", 0x6F},
    {u"VK_DOWN", 0x28},     {u"VK_E", 0x45},       {u"VK_END", 0x23},       {u"VK_ESCAPE", 0x1B},
    {u"VK_EXECUTE", 0x2B},  {u"VK_F", 0x46},       {u"VK_F1", 0x70},        {u"VK_F10", 0x79},
    {u"VK_F11", 0x7A},      {u"VK_F12", 0x7B},     {u"VK_F13", 0x7C},       {u"VK_F14", 0x7D},
    {u"VK_F15", 0x7E},      {u"VK_F16", 0x7F},     {u"VK_F17", 0x80},       {u"VK_F18", 0x81},
    {u"VK_F19", 0x82},      {u"VK_F2", 0x71},      {u"VK_F20", 0x83},       {u"VK_F21", 0x84},
    {u"VK_F22", 0x85},      {u"VK_F23", 0x86},     {u"VK_F24", 0x87},       {u"VK_F3", 0x72},
    {u"VK_F4", 0x73},       {u"VK_F5", 0x74},      {u"VK_F6", 0x75},        {u"VK_F7", 0x76},
    {u"VK_F8", 0x77},       {u"VK_F9", 0x78},      {u"VK_G", 0x47},         {u"VK_H", 0x48},
    {u"VK_HELP", 0x2F},     {u"VK_HOME", 0x24},    {u"VK_I", 0x49},         {u"VK_INSERT", 0x2D},
    {u"VK_J", 0x4A},        {u"VK_K", 0x4B},       {u"VK_L", 0x4C},         {u"VK_LEFT", 0x25},
    {u"VK_LWIN", 0x5B},     {u"VK_M", 0x4D},       {u"VK_MENU", 0x12},      {u"VK_MULTIPLY", 0x6A},
    {u"VK_N", 0x4E},        {u"VK_NEXT", 0x22},    {u"VK_NUMLOCK", 0x90},   {u"VK_NUMPAD0", 0x60},
    {u"VK_NUMPAD1", 0x61},  {u"VK_NUMPAD2", 0x62}, {u"VK_NUMPAD3", 0x63},   {u"VK_NUMPAD4", 0x64},
    {u"VK_NUMPAD5", 0x65},  {u"VK_NUMPAD6", 0x66}, {u"VK_NUMPAD7", 0x67},   {u"VK_NUMPAD8", 0x68},
    {u"VK_NUMPAD9", 0x69},  {u"VK_O", 0x4F},       {u"VK_P", 0x50},         {u"VK_PAUSE", 0x13},
    {u"VK_PRINT", 0x2A},    {u"VK_PRIOR", 0x21},   {u"VK_Q", 0x51},         {u"VK_R", 0x52},
    {u"VK_RETURN", 0x0D},   {u"VK_RIGHT", 0x27},   {u"VK_RWIN", 0x5C},      {u"VK_S", 0x53},
    {u"VK_SCROLL", 0x91},   {u"VK_SELECT", 0x29},  {u"VK_SEPARATOR", 0x6C}, {u"VK_SHIFT", 0x10},
    {u"VK_SNAPSHOT", 0x2C}, {u"VK_SPACE", 0x20},   {u"VK_SUBTRACT", 0x6D},  {u"VK_T", 0x54},
    {u"VK_TAB", 0x09},      {u"VK_U", 0x55},       {u"VK_UP", 0x26},        {u"VK_V", 0x56},
    {u"VK_W", 0x57},        {u"VK_X", 0x58},       {u"VK_Y", 0x59},         {u"VK_Z", 0x5A},
};
static_assert(std::size(kStandardKeys) == 108);

}  // namespace connectdialog
