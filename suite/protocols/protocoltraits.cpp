#include "suite/protocols/protocoltraits.h"

#include "config/appkind.h"
#include "suite/protocols/pages.h"
#include "suite/protocols/protocolconfig.h"

namespace connectdialog {

namespace {

template <auto member>
constexpr ProtocolMember kMember = Member<ProtocolSettings, member>;

constexpr ProtocolMember kSshMembers[] = {
    kMember<&ProtocolSettings::sshPort>,       kMember<&ProtocolSettings::sshIdentityFile>,
    kMember<&ProtocolSettings::sshJumpHost>,   kMember<&ProtocolSettings::sshForwardAgent>,
    kMember<&ProtocolSettings::sshForwardX11>, kMember<&ProtocolSettings::sshRemoteCommand>,
};
/// The first three of SSH: what a file transfer needs.
constexpr std::span<const ProtocolMember> kSftpMembers(kSshMembers, 3);
constexpr ProtocolMember kTelnetMembers[] = {kMember<&ProtocolSettings::telnetPort>};
constexpr ProtocolMember kTelnetSslMembers[] = {kMember<&ProtocolSettings::telnetSslPort>};
constexpr ProtocolMember kRLoginMembers[] = {kMember<&ProtocolSettings::rloginPort>};
constexpr ProtocolMember kRawMembers[] = {kMember<&ProtocolSettings::rawPort>};
constexpr ProtocolMember kFtpMembers[] = {kMember<&ProtocolSettings::ftpPort>};
constexpr ProtocolMember kFtpSslMembers[] = {kMember<&ProtocolSettings::ftpSslPort>};
constexpr ProtocolMember kSerialMembers[] = {
    kMember<&ProtocolSettings::serialDevice>,   kMember<&ProtocolSettings::serialBaudRate>,
    kMember<&ProtocolSettings::serialDataBits>, kMember<&ProtocolSettings::serialParity>,
    kMember<&ProtocolSettings::serialStopBits>, kMember<&ProtocolSettings::serialFlowControl>,
};
constexpr ProtocolMember kTapiMembers[] = {kMember<&ProtocolSettings::tapiPhoneNumber>,
                                           kMember<&ProtocolSettings::tapiModemDevice>};
constexpr ProtocolMember kShellMembers[] = {kMember<&ProtocolSettings::localShellCommand>};

using Target = ProtocolTarget;
using Client = LaunchClient;
using Settings = ProtocolSettings;

constexpr ProtocolTraits kProtocols[] = {
    {u"SSH2", kSshMembers, &Settings::sshPort, kSshPort, Target::kHost, Client::kSsh},
    {u"SSH1", kSshMembers, &Settings::sshPort, kSshPort, Target::kHost, Client::kSsh1},
    {u"Telnet", kTelnetMembers, &Settings::telnetPort, kTelnetPort, Target::kHost, Client::kTelnet},
    {u"Telnet/SSL", kTelnetSslMembers, &Settings::telnetSslPort, kTelnetSslPort, Target::kHost, Client::kTelnetSsl},
    {u"RLogin", kRLoginMembers, &Settings::rloginPort, kRLoginPort, Target::kHost, Client::kRLogin},
    {u"Serial", kSerialMembers, nullptr, kNoPort, Target::kSerialDevice, Client::kSerial},
    {u"Local Shell", kShellMembers, nullptr, kNoPort, Target::kNothing, Client::kShell},
    {u"TAPI", kTapiMembers, nullptr, kNoPort, Target::kPhoneNumber, Client::kNone},
    {u"Marks", {}, nullptr, kNoPort, Target::kNothing, Client::kNone},
    {u"Raw", kRawMembers, &Settings::rawPort, kNoPort, Target::kHost, Client::kRaw},
    {u"SFTP", kSftpMembers, &Settings::sshPort, kSshPort, Target::kHost, Client::kSftp},
    {u"FTP", kFtpMembers, &Settings::ftpPort, kFtpPort, Target::kHost, Client::kFtp},
    {u"FTP/SSL (implicit)", kFtpSslMembers, &Settings::ftpSslPort, kFtpSslPort, Target::kHost, Client::kFtpSslImplicit},
    {u"FTP/SSL (explicit)", kFtpMembers, &Settings::ftpPort, kFtpPort, Target::kHost, Client::kFtpSslExplicit},
    {u"SCP", kSftpMembers, &Settings::sshPort, kSshPort, Target::kHost, Client::kScp},
};

struct CatalogueRow {
    AppKind kind;
    std::u16string_view name;
};

/// The order within a kind is fixed. "None" stands last, so that the others are known by their place in a list of the
/// kind without it.
constexpr CatalogueRow kCatalogue[] = {
    {AppKind::kNorHalden, u"SSH2"},
    {AppKind::kNorHalden, u"SSH1"},
    {AppKind::kNorHalden, u"Telnet"},
    {AppKind::kNorHalden, u"Telnet/SSL"},
    {AppKind::kNorHalden, u"RLogin"},
    {AppKind::kNorHalden, u"Serial"},
    {AppKind::kNorHalden, u"Local Shell"},
    {AppKind::kNorHalden, u"TAPI"},
    {AppKind::kNorHalden, u"Marks"},
    {AppKind::kNorHalden, u"Raw"},
    {AppKind::kNorHalden, u"None"},
    {AppKind::kHalden, u"Telnet"},
    {AppKind::kHalden, u"RLogin"},
    {AppKind::kHalden, u"Serial"},
    {AppKind::kHalden, u"TAPI"},
    {AppKind::kHalden, u"Marks"},
    {AppKind::kHalden, u"Raw"},
    {AppKind::kTessaly, u"SFTP"},
    {AppKind::kTessaly, u"FTP"},
    {AppKind::kTessaly, u"FTP/SSL (implicit)"},
    {AppKind::kTessaly, u"FTP/SSL (explicit)"},
    {AppKind::kTessaly, u"SCP"},
    {AppKind::kTessaly, u"None"},
    {AppKind::kOther, u"SSH2"},
};

}  // namespace

const ProtocolTraits* FindProtocolTraits(std::u16string_view name) {
    for (const ProtocolTraits& protocol : kProtocols)
        if (protocol.name == name) return &protocol;
    return nullptr;
}

namespace {

ConnectProtocolTableElement MakeRow(const CatalogueRow& row) {
    ConnectProtocolTableElement element;
    element.name = row.name;
    element.kind = row.kind;
    if (FindProtocolTraits(row.name) == nullptr) return element;
    element.createConfig = CreateProtocolConfig;
    element.sharesSettings = true;
    element.createPage = FindWizardPageMaker(row.name);
    element.destroyPage = DestroyWizardPage;
    element.createQuickPage = MakeQuickPage;
    return element;
}

/// Dialogs take a place in their list of protocols for a row of the table: the rows of `first` stand first.
ConnectProtocolTable MakeTable(AppKind first) {
    ConnectProtocolTable rows;
    for (const bool isOwn : {true, false})
        for (const CatalogueRow& row : kCatalogue)
            if ((row.kind == first) == isOwn) rows.Add(MakeRow(row));
    return rows;
}

}  // namespace

const ConnectProtocolTable& GetReferenceProtocolTable() {
    static const ConnectProtocolTable haldenTable = MakeTable(AppKind::kHalden);
    static const ConnectProtocolTable norHaldenTable = MakeTable(AppKind::kNorHalden);
    static const ConnectProtocolTable tessalyTable = MakeTable(AppKind::kTessaly);
    switch (GetAppKind()) {
        case AppKind::kHalden:
            return haldenTable;
        case AppKind::kTessaly:
            return tessalyTable;
        default:
            return norHaldenTable;
    }
}

}  // namespace connectdialog
