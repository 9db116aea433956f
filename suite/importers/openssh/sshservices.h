// Port numbers by the names of their services.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace connectdialog {

class ISshFiles;

/// The system's list of services, `/etc/services`: lines `name port/protocol aliases # comment`. Read when it is first
/// asked; where there is none, no service has a port.
class SshServices {
  public:
    explicit SshServices(ISshFiles& files) : files(files) {}
    /// The TCP port of a service, 0 when it is not known. By case.
    int FindPort(const std::string& service);

  private:
    void Load();
    void AddLine(std::string_view line);

    ISshFiles& files;
    std::optional<std::map<std::string, int>> ports;
};

}  // namespace connectdialog
