#include "foundation/messageformat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "foundation/casefold.h"
#include "foundation/stringerrors.h"
#include "foundation/vunicodestring.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

/// What stands between the exclamation marks of an insert.
struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    std::size_t width = 0;
    bool hasPrecision = false;
    std::size_t precision = 0;
    char16_t type = u's';
};

bool IsOneOf(char16_t character, std::u16string_view characters) {
    return characters.find(character) != characters.npos;
}

/// Reads a conversion from its text, from the left to the right.
class ConversionReader {
  public:
    explicit ConversionReader(std::u16string_view text) : text(text) {}

    Conversion Read() {
        Conversion conversion;
        ReadFlags(conversion);
        conversion.width = ReadNumber();
        conversion.hasPrecision = Skip(u".");
        if (conversion.hasPrecision) conversion.precision = ReadNumber();
        SkipSize();
        if (text.size() != 1 || !IsOneOf(text[0], u"diuxXocCsSeEfFgG")) throw InvalidParameter();
        conversion.type = text[0];
        return conversion;
    }

  private:
    void ReadFlags(Conversion& conversion) {
        for (; !text.empty() && IsOneOf(text[0], u"-+ #0"); text.remove_prefix(1)) {
            switch (text[0]) {
                case u'-':
                    conversion.left = true;
                    break;
                case u'+':
                    conversion.plus = true;
                    break;
                case u' ':
                    conversion.blank = true;
                    break;
                case u'#':
                    conversion.alternate = true;
                    break;
                default:
                    conversion.zero = true;
                    break;
            }
        }
    }
    std::size_t ReadNumber() {
        std::size_t number = 0;
        for (; !text.empty() && IsDigit(text[0]); text.remove_prefix(1)) {
            number = number * 10 + static_cast<std::size_t>(text[0] - u'0');
            if (number > kMaxMessageField) throw InvalidParameter();
        }
        return number;
    }
    void SkipSize() {
        for (const std::u16string_view size :
             {u"hh", u"h", u"ll", u"l", u"w", u"z", u"j", u"t", u"I64", u"I32", u"I"}) {
            if (Skip(size)) return;
        }
    }
    bool Skip(std::u16string_view expected) {
        if (!text.starts_with(expected)) return false;
        text.remove_prefix(expected.size());
        return true;
    }

    std::u16string_view text;
};

/// Expands one template.
class MessageExpander {
  public:
    MessageExpander(std::u16string_view rest, const FormatArgument* arguments, std::size_t count, std::uint32_t flags,
                    char16_t* out)
        : rest(rest), arguments(arguments), argumentCount(count), flags(flags), out(out) {}

    std::size_t Run() {
        while (!rest.empty()) {
            const char16_t character = Next();
            if (character == u'%') {
                ExpandEscape();
            } else if ((flags & kMessageOneLine) == 0 || (character != u'\r' && character != u'\n')) {
                Put(character);
            }
        }
        return written;
    }

  private:
    char16_t Next() {
        const char16_t character = rest[0];
        rest.remove_prefix(1);
        return character;
    }

    void ExpandEscape() {
        if (rest.empty()) throw InvalidParameter();
        const bool ignoring = (flags & kMessageIgnoreInserts) != 0;
        if (!ignoring && rest[0] >= u'1' && rest[0] <= u'9') {
            ExpandInsert();
            return;
        }
        const char16_t escape = Next();
        switch (escape) {
            case u'0':
                rest = {};
                break;
            case u'n':
                Put(u"\r\n");
                break;
            case u'r':
                Put(u'\r');
                break;
            default:
                if (ignoring) Put(u'%');
                Put(escape);
        }
    }

    void ExpandInsert() {
        std::size_t index = static_cast<std::size_t>(Next() - u'0');
        if (!rest.empty() && IsDigit(rest[0])) index = index * 10 + static_cast<std::size_t>(Next() - u'0');
        const Conversion conversion = ReadConversion();
        if (index > argumentCount) throw InvalidParameter();
        Convert(conversion, arguments[index - 1]);
    }

    Conversion ReadConversion() {
        if (rest.empty() || rest[0] != u'!') return {};
        const std::size_t end = rest.find(u'!', 1);
        if (end == rest.npos) throw InvalidParameter();
        const std::u16string_view text = rest.substr(1, end - 1);
        rest.remove_prefix(end + 1);
        return ConversionReader(text).Read();
    }

    void Convert(const Conversion& conversion, const FormatArgument& argument) {
        using Kind = FormatArgument::Kind;
        const Kind kind = argument.GetKind();
        const bool isInteger = kind == Kind::kSigned || kind == Kind::kUnsigned;
        const bool isText = kind == Kind::kWide || kind == Kind::kNarrow;
        if (isInteger && IsOneOf(conversion.type, u"diuxXo")) {
            PutInteger(conversion, argument);
        } else if (isInteger && IsOneOf(conversion.type, u"cC") && argument.AsUnsigned() <= 0xFFFF) {
            const char16_t character = static_cast<char16_t>(argument.AsUnsigned());
            PutField(conversion, {&character, 1});
        } else if (isText && IsOneOf(conversion.type, u"sS")) {
            PutText(conversion, argument);
        } else if (kind == Kind::kDouble && IsOneOf(conversion.type, u"eEfFgG")) {
            PutDouble(conversion, argument.AsDouble());
        } else {
            throw InvalidParameter();
        }
    }

    void PutText(const Conversion& conversion, const FormatArgument& argument) {
        const bool isWide = argument.GetKind() == FormatArgument::Kind::kWide;
        if (!isWide && conversion.width == 0 && !conversion.hasPrecision) {
            written += platform::NarrowToWide(argument.AsNarrow(), out != nullptr ? out + written : nullptr);
            return;
        }
        const std::u16string widened = isWide ? std::u16string() : platform::ToWide(argument.AsNarrow());
        const std::u16string_view text = isWide ? argument.AsWide() : std::u16string_view(widened);
        PutField(conversion, conversion.hasPrecision ? text.substr(0, conversion.precision) : text);
    }

    /// As in C, a type of less than 32 bits counts as one of 32.
    static std::uint64_t AsUnsigned(const FormatArgument& argument) {
        return argument.GetByteWidth() > 4 ? argument.AsUnsigned() : argument.AsUnsigned() & 0xFFFFFFFF;
    }
    static std::int64_t AsSigned(const FormatArgument& argument) {
        return argument.GetByteWidth() > 4 ? argument.AsSigned() : static_cast<std::int32_t>(argument.AsUnsigned());
    }

    void PutInteger(const Conversion& conversion, const FormatArgument& argument) {
        const bool isSigned = IsOneOf(conversion.type, u"di");
        const bool negative = isSigned && AsSigned(argument) < 0;
        const std::uint64_t magnitude = !isSigned  ? AsUnsigned(argument)
                                        : negative ? 0 - static_cast<std::uint64_t>(AsSigned(argument))
                                                   : static_cast<std::uint64_t>(AsSigned(argument));
        const int base = IsOneOf(conversion.type, u"xX") ? 16 : conversion.type == u'o' ? 8 : 10;
        char digits[24];
        char* end = std::to_chars(digits, digits + sizeof(digits), magnitude, base).ptr;
        if (magnitude == 0 && conversion.hasPrecision && conversion.precision == 0) end = digits;

        std::string number(digits, end);
        if (number.size() < conversion.precision) number.insert(0, conversion.precision - number.size(), '0');
        if (base == 8 && conversion.alternate && !number.starts_with('0')) number.insert(0, 1, '0');
        std::string prefix = isSigned ? SignOf(conversion, negative) : std::string();
        if (base == 16 && conversion.alternate && magnitude != 0) prefix = "0x";
        PutNumber(conversion, prefix, number, conversion.zero && !conversion.hasPrecision);
    }

    void PutDouble(const Conversion& conversion, double value) {
        const char16_t type = ToLower(conversion.type);
        const auto format = type == u'e'   ? std::chars_format::scientific
                            : type == u'f' ? std::chars_format::fixed
                                           : std::chars_format::general;
        const int precision = conversion.hasPrecision ? static_cast<int>(conversion.precision) : 6;
        constexpr std::size_t kLongestWholePart = 400;
        std::string number(kLongestWholePart + static_cast<std::size_t>(precision), '\0');
        const auto end =
            std::to_chars(number.data(), number.data() + number.size(), std::fabs(value), format, precision);
        number.resize(static_cast<std::size_t>(end.ptr - number.data()));
        PutNumber(conversion, SignOf(conversion, std::signbit(value)), number, conversion.zero && std::isfinite(value));
    }

    static std::string SignOf(const Conversion& conversion, bool negative) {
        return negative ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
    }

    /// The types in capitals print capitals.
    void PutNumber(const Conversion& conversion, const std::string& prefix, std::string number, bool zeroFill) {
        const std::size_t length = prefix.size() + number.size();
        if (zeroFill && !conversion.left && length < conversion.width) number.insert(0, conversion.width - length, '0');
        std::u16string text = platform::ToWide(prefix + number);
        if (IsOneOf(conversion.type, u"XEFG")) std::transform(text.begin(), text.end(), text.begin(), ToUpper);
        PutField(conversion, text);
    }

    void PutField(const Conversion& conversion, std::u16string_view text) {
        const std::size_t padding = conversion.width - std::min(conversion.width, text.size());
        if (!conversion.left) PutBlanks(padding);
        Put(text);
        if (conversion.left) PutBlanks(padding);
    }
    void PutBlanks(std::size_t count) {
        if (out != nullptr) std::fill_n(out + written, count, u' ');
        written += count;
    }
    void Put(std::u16string_view text) {
        if (out != nullptr) std::copy(text.begin(), text.end(), out + written);
        written += text.size();
    }
    void Put(char16_t character) { Put(std::u16string_view(&character, 1)); }

    std::u16string_view rest;
    const FormatArgument* arguments;
    std::size_t argumentCount;
    std::uint32_t flags;
    char16_t* out;
    std::size_t written = 0;
};

}  // namespace

std::size_t ExpandMessage(std::u16string_view messageTemplate, const FormatArgument* arguments, std::size_t count,
                          std::uint32_t flags, char16_t* out) {
    return MessageExpander(messageTemplate, arguments, count, flags, out).Run();
}

bool ExpandMessageInto(VUnicodeString& text, std::u16string_view messageTemplate, const FormatArgument* arguments,
                       std::size_t count, std::uint32_t flags) {
    for (const std::uint32_t attempt : {flags, flags | kMessageIgnoreInserts}) {
        try {
            VUnicodeString message;
            message.SetState(text.GetState());
            if (const std::size_t length = ExpandMessage(messageTemplate, arguments, count, attempt, nullptr)) {
                message.Resize(length);
                ExpandMessage(messageTemplate, arguments, count, attempt, &message.MutableAt(0));
            }
            text = message;
            return true;
        } catch (const InvalidParameter&) {
            continue;
        }
    }
    return false;
}

}  // namespace connectdialog
