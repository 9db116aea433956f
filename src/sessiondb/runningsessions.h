// Which sessions are open in running applications: asked before a session is deleted.
//
// An application answers message 0x423 twice: with both arguments 0 it tells how many bytes its list needs; then, given
// that size as the second argument, it writes the list (a string array in a buffer) into the shared block of
// VMemoryMappedBuffer, under the block's lock, and tells how many bytes it wrote. A block is made for each list, and an
// application that comes too late with its own does not write it: no list reaches an asker under another's name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>

#include "foundation/vstringarray.h"
#include "platform/runninghosts.h"

namespace connectdialog {

/// The classes of the main frames that are asked.
inline constexpr std::u16string_view kNorHaldenFrameClass = u"Brennmark Software - NorHalden";
inline constexpr std::u16string_view kTessalyFrameClass = u"Tessaly_MainFrame";
inline constexpr std::uint32_t kRunningSessionsMessage = 0x423;

struct RunningSessions {
    VStringArray paths;           ///< session paths; one that is open twice is there twice
    std::size_t silentHosts = 0;  ///< hosts that run but did not answer: what they have open is not known
    bool isBusy = false;          ///< another question was under way all the time: nobody was asked
    std::uint32_t error = 0;      ///< not 0: there may be hosts that cannot be looked for, for this reason
};

/// What the user is told then: nothing is deleted without the question.
inline constexpr char16_t kRunningSessionsBusy[] =
    u"Another program asks just now which sessions are open. Please try again.";

/// What the user is told of hosts that were not heard: a sentence, or the empty text.
VUnicodeString DescribeUnheardHosts(const RunningSessions& running);

/// Asks all running applications of this user. Takes 2 seconds at most, whatever they do.
RunningSessions GetRunningSessionPaths();

/// This application's side: answers what it was told last, on a thread of its own, as long as it lives.
class RunningSessionsHost {
  public:
    explicit RunningSessionsHost(std::u16string_view frameClass);

    void SetPaths(const VStringArray& paths);
    /// 0, or the error for which others do not find this application.
    std::uint32_t GetError() const { return announcement.GetError(); }

  private:
    std::uint64_t Answer(const platform::HostMessage& message);

    std::mutex guard;
    VStringArray openPaths;
    platform::HostAnnouncement announcement;  // last: its thread uses the others
};

}  // namespace connectdialog
