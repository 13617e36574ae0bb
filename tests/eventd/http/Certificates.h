// An authority of a test's own and the certificates that it signs, as PEM files.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_EVENTD_HTTP_CERTIFICATES_H
#define EVENTSYSTEM_TESTS_EVENTD_HTTP_CERTIFICATES_H

#include <openssl/x509.h>

#include <filesystem>
#include <memory>
#include <string>

#include "tests/support/TempDir.h"

namespace EventSystemTest {

class Certificates {
 public:
  Certificates();

  // Makes FILE.crt and FILE.key, signed by the authority; `use` is "serverAuth" or "clientAuth".
  void sign(const std::string& file, const std::string& commonName, const std::string& use,
            long daysFromNow = 1) const;

  std::filesystem::path file(const std::string& name) const { return m_directory.path() / name; }
  std::filesystem::path authority() const { return file("authority.crt"); }

 private:
  using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
  using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

  static Certificate make(const std::string& commonName, EVP_PKEY* key, long daysFromNow);
  void write(const std::string& name, X509* certificate, EVP_PKEY* key) const;

  TempDir m_directory;
  Key m_key;
  Certificate m_certificate;
};

}  // namespace EventSystemTest

#endif
