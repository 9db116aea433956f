#include "foundation/vtextfile.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/lasterror.h"

namespace connectdialog {

namespace {

/// By the number of the line ending.
constexpr const char16_t* kLineEndings[] = {u"\r\n", u"\r", u"\n", u"\r\n"};

bool IsLineEnd(char16_t character) {
    return character == u'\n' || character == u'\r';
}

bool KeepsOldFile(std::uint32_t disposition, bool existed) {
    return disposition == platform::kOpenExisting || (disposition == platform::kOpenAlways && existed);
}

}  // namespace

bool VTextFile::Open(const VUnicodeString& name, std::uint32_t access, std::uint32_t disposition) {
    ForgetText();
    filePosition = 0;
    if (!VFile::Open(name, access, disposition)) return false;
    const std::uint32_t opened = platform::GetLastErrorCode();
    const bool keepsOld = KeepsOldFile(disposition, opened == platform::kAlreadyExists);
    const bool isGood = keepsOld ? StartReading() : StartNew();
    const std::uint32_t result = isGood ? opened : platform::GetLastErrorCode();
    if (!isGood) Close();
    platform::SetLastErrorCode(result);
    return isGood;
}

bool VTextFile::StartNew() {
    if (encoding == TextEncoding::kUnknown) encoding = TextEncoding::kUtf16Le;
    return WriteBytes(MarkOf(encoding));
}

bool VTextFile::StartReading() {
    encoding = TextEncoding::kUnknown;
    const bool isGood = Fill() || platform::GetLastErrorCode() == platform::kHandleEof;
    if (encoding == TextEncoding::kUnknown) encoding = TextEncoding::kLocal;
    return isGood;
}

void VTextFile::ForgetText() {
    bytesInBuffer = 0;
    readOffset = 0;
    atEnd = false;
    pendingReturn = false;
    decoded.Empty();
    decodedOffset = 0;
    begun = std::u16string();  // a line may have been very long
}

bool VTextFile::Seek(std::int64_t offset, platform::SeekOrigin origin) {
    ForgetText();
    return VFile::Seek(offset, origin) && GetPosition(filePosition);
}

bool VTextFile::ReadLine(VUnicodeString& line) {
    std::u16string_view view;
    const bool isRead = ReadLineView(view);
    line = view;
    return isRead;
}

bool VTextFile::ReadLineView(std::u16string_view& line) {
    begun.clear();
    while (!ScanLine(line)) {
        if (begun.size() > kLongestLine) {
            line = {};
            return platform::FailWith(platform::kFileTooLarge);
        }
        if (ReadMoreText()) continue;
        line = begun;
        return !begun.empty();
    }
    return true;
}

/// Takes the text up to a line end into `line`, behind what had been begun of it; with no line end the text is begun.
bool VTextFile::ScanLine(std::u16string_view& line) {
    SkipLineFeedAfterReturn();
    const std::u16string_view rest = decoded.View().substr(decodedOffset);
    const auto* end = std::find_if(rest.begin(), rest.end(), IsLineEnd);
    const std::u16string_view text = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    decodedOffset += text.size();
    if (end == rest.end()) {
        begun += text;
        return false;
    }
    ++decodedOffset;
    pendingReturn = *end == u'\r';
    line = begun.empty() ? text : std::u16string_view(begun += text);
    return true;
}

void VTextFile::SkipLineFeedAfterReturn() {
    if (!pendingReturn || decodedOffset == decoded.GetLength()) return;
    if (decoded[decodedOffset] == u'\n') ++decodedOffset;
    pendingReturn = false;
}

bool VTextFile::ReadMoreText() {
    if (encoding == TextEncoding::kUtf32Le) return platform::FailWith(platform::kNotSupported);
    do {
        const DecodedText text = Decode();
        if (text.written > 0) return true;
        if (text.isMalformed) return platform::FailWith(platform::kNoUnicodeTranslation);
    } while (Fill());
    return false;
}

DecodedText VTextFile::Decode() {
    char16_t characters[kBufferSize];
    const DecodedText text = DecodeText(encoding, BufferedBytes(), atEnd, characters);
    decoded = std::u16string_view(characters, text.written);
    decodedOffset = 0;
    readOffset += text.consumed;
    return text;
}

/// Reads on behind what is left of the buffer. At the end of the file it succeeds once more when something is left,
/// since that can then be decoded as what it is.
bool VTextFile::Fill() {
    const std::string_view rest = BufferedBytes();
    std::memmove(buffer.data(), rest.data(), rest.size());
    bytesInBuffer = rest.size();
    readOffset = 0;
    const bool isStart = filePosition == 0;
    std::size_t done = 0;
    if (!ReadIntoBuffer(done)) return false;
    const bool knewEnd = std::exchange(atEnd, done == 0);
    if (atEnd && (knewEnd || rest.empty())) return platform::FailWith(platform::kHandleEof);
    if (isStart) SkipMark();
    return true;
}

bool VTextFile::ReadIntoBuffer(std::size_t& done) {
    const std::size_t room = kBufferSize - bytesInBuffer;
    if (lockWhileAccessing && !LockRange(filePosition, room, false)) return false;
    const bool isRead = Read(buffer.data() + bytesInBuffer, room, done);
    if (lockWhileAccessing) UnlockRange(filePosition, room);
    bytesInBuffer += done;
    filePosition += done;
    return isRead;
}

void VTextFile::SkipMark() {
    if (encoding == TextEncoding::kUnknown) encoding = DetectEncoding(BufferedBytes());
    const std::string_view mark = MarkOf(encoding);
    if (BufferedBytes().starts_with(mark)) readOffset = mark.size();
}

std::string_view VTextFile::BufferedBytes() const {
    return {buffer.data() + readOffset, bytesInBuffer - readOffset};
}

bool VTextFile::WriteLine(const VUnicodeString& text) {
    return Write(text + kLineEndings[static_cast<std::size_t>(lineEnding)]);
}

bool VTextFile::Write(const VUnicodeString& text) {
    std::string bytes;
    if (!EncodeText(encoding, text, bytes)) return platform::FailWith(platform::kNoUnicodeTranslation);
    return WriteBytes(bytes);
}

bool VTextFile::WriteBytes(std::string_view bytes) {
    ForgetText();
    if (bytes.empty()) return true;
    if (lockWhileAccessing && !LockRange(filePosition, bytes.size(), true)) return false;
    const bool isWritten = VFile::Write(bytes.data(), bytes.size());
    if (lockWhileAccessing) UnlockRange(filePosition, bytes.size());
    return GetPosition(filePosition) && isWritten;
}

}  // namespace connectdialog
