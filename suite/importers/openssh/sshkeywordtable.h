// The rows behind sshkeywords.h, from ssh_config(5) of OpenSSH 9.2 as Debian ships it, and the names of later versions.
#pragma once

#include <algorithm>
#include <array>

#include "suite/importers/openssh/sshkeywords.h"

namespace connectdialog {

inline constexpr std::string_view kFlag = " yes no true false ";
inline constexpr std::string_view kFlagOrAsk = " yes no true false ask ";

/// In alphabetical order. Deprecated and unsupported keywords, which ssh reads past, are among the kAny; so are
/// forwardings, paths and lists whose form does not matter to an import.
inline constexpr std::array kSshKeywords = std::to_array<SshKeywordRow>({
    {"addkeystoagent"},
    {"addressfamily", SshArguments::kWord, SshKeyword::kOther, " inet inet6 any "},
    {"afstokenpassing"},
    {"batchmode", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"bindaddress", SshArguments::kOne},
    {"bindinterface", SshArguments::kOne},
    {"canonicaldomains"},
    {"canonicalizefallbacklocal", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"canonicalizehostname", SshArguments::kWord, SshKeyword::kCanonicalizeHostname, " yes no true false always "},
    {"canonicalizemaxdots", SshArguments::kNumber},
    {"canonicalizepermittedcnames"},
    {"casignaturealgorithms", SshArguments::kKeyTypes},
    {"certificatefile", SshArguments::kOne},
    {"challengeresponseauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"channeltimeout", SshArguments::kAny, SshKeyword::kOther, {}, "9.6"},
    {"checkhostip", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"cipher"},
    {"ciphers", SshArguments::kCiphers},
    {"clearallforwardings", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"compression", SshArguments::kWord, SshKeyword::kOther, " yes no true false "},
    {"compressionlevel"},
    {"connectionattempts", SshArguments::kNumber},
    {"connecttimeout", SshArguments::kTime},
    {"controlmaster", SshArguments::kWord, SshKeyword::kOther, " yes no true false ask auto autoask "},
    {"controlpath", SshArguments::kOne},
    {"controlpersist"},
    {"dsaauthentication", SshArguments::kWord, SshKeyword::kOther, " yes no true false unbound host-bound "},
    {"dynamicforward"},
    {"enableescapecommandline", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"enablesshkeysign", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"escapechar", SshArguments::kOne},
    {"exitonforwardfailure", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"fallbacktorsh"},
    {"fingerprinthash", SshArguments::kWord, SshKeyword::kOther, " md5 sha256 "},
    {"forkafterauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"forwardagent", SshArguments::kOne},
    {"forwardx11", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"forwardx11timeout", SshArguments::kTime},
    {"forwardx11trusted", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"gatewayports", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"globalknownhostsfile"},
    {"globalknownhostsfile2"},
    {"gssapiauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"gssapiclientidentity", SshArguments::kOne},
    {"gssapidelegatecredentials", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"gssapikexalgorithms", SshArguments::kOne},
    {"gssapikeyexchange", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"gssapirenewalforcesrekey", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"gssapiserveridentity", SshArguments::kOne},
    {"gssapitrustdns", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"hashknownhosts", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"host", SshArguments::kAny, SshKeyword::kHost},
    {"hostbasedacceptedalgorithms", SshArguments::kKeyTypes},
    {"hostbasedauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"hostbasedkeytypes", SshArguments::kKeyTypes},
    {"hostkeyalgorithms", SshArguments::kKeyTypes},
    {"hostkeyalias", SshArguments::kOne},
    {"hostname", SshArguments::kOne, SshKeyword::kHostName},
    {"identitiesonly", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"identityagent", SshArguments::kOne},
    {"identityfile", SshArguments::kOne, SshKeyword::kIdentityFile},
    {"identityfile2", SshArguments::kOne, SshKeyword::kIdentityFile},
    {"ignoreunknown", SshArguments::kOne, SshKeyword::kIgnoreUnknown},
    {"include", SshArguments::kAny, SshKeyword::kInclude},
    {"ipqos"},
    {"kbdinteractiveauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"kbdinteractivedevices", SshArguments::kOne},
    {"keepalive", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"kerberosauthentication"},
    {"kerberostgtpassing"},
    {"kexalgorithms", SshArguments::kKeyExchanges},
    {"knownhostscommand"},
    {"localcommand"},
    {"localforward"},
    {"loglevel", SshArguments::kWord, SshKeyword::kOther,
     " quiet fatal error info verbose debug debug1 debug2 debug3 "},
    {"logverbose"},
    {"macs", SshArguments::kMacs},
    {"match", SshArguments::kAny, SshKeyword::kMatch},
    {"nohostauthenticationforlocalhost", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"numberofpasswordprompts", SshArguments::kNumber},
    {"obscurekeystroketiming", SshArguments::kOne, SshKeyword::kOther, {}, "9.5"},
    {"passwordauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"permitlocalcommand", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"permitremoteopen"},
    {"pkcs11provider", SshArguments::kOne},
    {"port", SshArguments::kOne, SshKeyword::kPort},
    {"preferredauthentications", SshArguments::kOne},
    {"protocol"},
    {"protocolkeepalives", SshArguments::kTime},
    {"proxycommand", SshArguments::kAny, SshKeyword::kProxyCommand},
    {"proxyjump", SshArguments::kAny, SshKeyword::kProxyJump},
    {"proxyusefdpass", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"pubkeyacceptedalgorithms", SshArguments::kKeyTypes},
    {"pubkeyacceptedkeytypes", SshArguments::kKeyTypes},
    {"pubkeyauthentication", SshArguments::kWord, SshKeyword::kOther, " yes no true false unbound host-bound "},
    {"refuseconnection", SshArguments::kOne, SshKeyword::kOther, {}, "10.0"},
    {"rekeylimit"},
    {"remotecommand"},
    {"remoteforward"},
    {"requesttty", SshArguments::kWord, SshKeyword::kOther, " yes no true false force auto "},
    {"requiredrsasize", SshArguments::kNumber},
    {"revokedhostkeys", SshArguments::kOne},
    {"rhostsauthentication"},
    {"rhostsrsaauthentication"},
    {"rsaauthentication"},
    {"securitykeyprovider", SshArguments::kOne},
    {"sendenv"},
    {"serveralivecountmax", SshArguments::kNumber},
    {"serveraliveinterval", SshArguments::kTime},
    {"sessiontype", SshArguments::kWord, SshKeyword::kOther, " none subsystem default "},
    {"setenv"},
    {"setuptimeout", SshArguments::kTime},
    {"skeyauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"smartcarddevice", SshArguments::kOne},
    {"stdinnull", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"streamlocalbindmask", SshArguments::kOne},
    {"streamlocalbindunlink", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"stricthostkeychecking", SshArguments::kWord, SshKeyword::kOther, " yes no true false ask off accept-new "},
    {"syslogfacility", SshArguments::kWord, SshKeyword::kOther,
     " daemon user auth authpriv local0 local1 local2 local3 local4 local5 local6 local7 "},
    {"tag", SshArguments::kOne, SshKeyword::kTag, {}, "9.4"},
    {"tcpkeepalive", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"tisauthentication", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"tunnel", SshArguments::kWord, SshKeyword::kOther, " yes no true false ethernet point-to-point "},
    {"tunneldevice", SshArguments::kOne},
    {"updatehostkeys", SshArguments::kWord, SshKeyword::kOther, kFlagOrAsk},
    {"useprivilegedport"},
    {"user", SshArguments::kOne, SshKeyword::kUser},
    {"userknownhostsfile"},
    {"userknownhostsfile2"},
    {"useroaming"},
    {"usersh"},
    {"verifyhostkeydns", SshArguments::kWord, SshKeyword::kOther, kFlagOrAsk},
    {"versionaddendum", SshArguments::kAny, SshKeyword::kOther, {}, "10.0"},
    {"visualhostkey", SshArguments::kWord, SshKeyword::kOther, kFlag},
    {"warnweakcrypto", SshArguments::kAny, SshKeyword::kOther, {}, "10.1"},
    {"xauthlocation", SshArguments::kOne},
});

static_assert(std::ranges::is_sorted(kSshKeywords, {}, &SshKeywordRow::name));

// The names of algorithms, separated and enclosed by blanks. Names of later versions are among them: a file that
// names one is not broken.

inline constexpr std::string_view kSshCiphers =
    " 3des-cbc aes128-cbc aes192-cbc aes256-cbc aes128-ctr aes192-ctr aes256-ctr aes128-gcm@openssh.com"
    " aes256-gcm@openssh.com chacha20-poly1305@openssh.com ";
inline constexpr std::string_view kSshMacs =
    " hmac-sha1 hmac-sha1-96 hmac-sha2-256 hmac-sha2-512 hmac-md5 hmac-md5-96 umac-64@openssh.com umac-128@openssh.com"
    " hmac-sha1-etm@openssh.com hmac-sha1-96-etm@openssh.com hmac-sha2-256-etm@openssh.com"
    " hmac-sha2-512-etm@openssh.com hmac-md5-etm@openssh.com hmac-md5-96-etm@openssh.com umac-64-etm@openssh.com"
    " umac-128-etm@openssh.com ";
inline constexpr std::string_view kSshKeyExchanges =
    " diffie-hellman-group1-sha1 diffie-hellman-group14-sha1 diffie-hellman-group14-sha256"
    " diffie-hellman-group16-sha512 diffie-hellman-group18-sha512 diffie-hellman-group-exchange-sha1"
    " diffie-hellman-group-exchange-sha256 ecdh-sha2-nistp256 ecdh-sha2-nistp384 ecdh-sha2-nistp521 curve25519-sha256"
    " curve25519-sha256@libssh.org sntrup761x25519-sha512 sntrup761x25519-sha512@openssh.com mlkem768x25519-sha256 ";
inline constexpr std::string_view kSshKeyTypes =
    " ssh-ed25519 ssh-ed25519-cert-v01@openssh.com sk-ssh-ed25519@openssh.com sk-ssh-ed25519-cert-v01@openssh.com"
    " ecdsa-sha2-nistp256 ecdsa-sha2-nistp256-cert-v01@openssh.com ecdsa-sha2-nistp384"
    " ecdsa-sha2-nistp384-cert-v01@openssh.com ecdsa-sha2-nistp521 ecdsa-sha2-nistp521-cert-v01@openssh.com"
    " sk-ecdsa-sha2-nistp256@openssh.com sk-ecdsa-sha2-nistp256-cert-v01@openssh.com"
    " webauthn-sk-ecdsa-sha2-nistp256@openssh.com ssh-dss ssh-dss-cert-v01@openssh.com ssh-rsa"
    " ssh-rsa-cert-v01@openssh.com rsa-sha2-256 rsa-sha2-256-cert-v01@openssh.com rsa-sha2-512"
    " rsa-sha2-512-cert-v01@openssh.com ";

}  // namespace connectdialog
