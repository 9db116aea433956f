// Text files, read and written line by line in several encodings.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/textencoding.h"
#include "foundation/vfile.h"

namespace connectdialog {

/// What WriteLine puts behind a line. When reading, all of them end a line, in any mixture.
enum class LineEnding : std::uint32_t { kCrLf = 0, kCr = 1, kLf = 2, kCrLfToo = 3 };

/// A file that is read from its start, or from where it was sought to, and written where reading or writing has got to.
///
/// Memory stays bounded: 4096 bytes of the file are kept at a time, and a line has at most kLongestLine characters.
/// What is malformed in the local encoding becomes U+FFFD; in UTF-8 it ends the reading (see ReadLine).
class VTextFile : public VFile {
  public:
    static constexpr std::size_t kLongestLine = std::size_t{16} << 20;

    /// Before opening. At first the encoding is unknown, the line ending kCrLf, and nothing is locked.
    void SetEncoding(TextEncoding id) { encoding = id; }
    void SetLineEnding(LineEnding ending) { lineEnding = ending; }
    /// With locking, the range is locked around each read and write, shared and exclusive, against other processes
    /// that do the same; this waits for them.
    void SetLocking(bool locks) { lockWhileAccessing = locks; }
    /// The encoding in force, which opening an old file has found.
    TextEncoding GetEncoding() const { return encoding; }

    /// Opens as VFile does. A file that was made or emptied gets its mark. An old file that is kept (by kOpenExisting
    /// or kOpenAlways) has its first bytes read, and the encoding is found by its mark, whatever was set: that needs
    /// access for reading. Its size may be 0. On failure: false, and the file is closed.
    bool Open(const VUnicodeString& name, std::uint32_t access, std::uint32_t disposition) override;

    /// Moves to a byte of the file and forgets the text that was read ahead. An origin of kCurrent counts from the end
    /// of what has been read from the file, which is ahead of the lines given out. A mark at the start of the file is
    /// never given out as text. Requires: no character is cut in two.
    bool Seek(std::int64_t offset, platform::SeekOrigin origin) override;

    /// Gives the next line without its end; the last line need not have one. The state of `line` stays.
    /// On failure: false and `line` is empty; the last error is 38 at the end of the file, 1113 where UTF-8 is
    /// malformed, 223 when a line is too long, otherwise what reading failed with. Malformed UTF-8 and errors end the
    /// reading: what stood before them in the line is still given, with true, and the next call fails.
    bool ReadLine(VUnicodeString& line);
    /// The same without a copy: the view lasts until the next call that reads, writes, seeks or opens.
    bool ReadLineView(std::u16string_view& line);

    /// Writes the text and the line ending, or the text alone, and forgets the text that was read ahead.
    /// On failure: false; with 1113, and nothing is written, when the text has no form in UTF-8 since a high surrogate
    /// stands alone.
    bool WriteLine(const VUnicodeString& text);
    bool Write(const VUnicodeString& text);

  private:
    static constexpr std::size_t kBufferSize = 4096;

    void ForgetText();
    bool StartNew();
    bool StartReading();
    bool WriteBytes(std::string_view bytes);

    bool ScanLine(std::u16string_view& line);
    void SkipLineFeedAfterReturn();
    bool ReadMoreText();
    DecodedText Decode();
    bool Fill();
    bool ReadIntoBuffer(std::size_t& done);
    void SkipMark();
    std::string_view BufferedBytes() const;

    TextEncoding encoding = TextEncoding::kUnknown;
    LineEnding lineEnding = LineEnding::kCrLf;
    bool lockWhileAccessing = false;
    std::uint64_t filePosition = 0;  ///< the end of what has been read or written
    std::array<char, kBufferSize> buffer{};
    std::size_t bytesInBuffer = 0;
    std::size_t readOffset = 0;  ///< what has been decoded of the buffer
    bool atEnd = false;          ///< the last read came to the end of the file
    bool pendingReturn = false;  ///< a carriage return has just ended a line
    VUnicodeString decoded;
    std::size_t decodedOffset = 0;  ///< what has been given out of `decoded`
    std::u16string begun;           ///< of the current line, where it did not end in `decoded`
};

}  // namespace connectdialog
