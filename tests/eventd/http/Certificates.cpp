#include "tests/eventd/http/Certificates.h"

#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <stdexcept>

namespace EventSystemTest {
namespace {

constexpr long kDay = 24L * 60 * 60;

void check(bool done) {
  if (!done) throw std::runtime_error("A certificate could not be made.");
}

void extend(X509* certificate, X509* issuer, int kind, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  const std::unique_ptr<X509_EXTENSION, decltype(&X509_EXTENSION_free)> extension(
      X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()), &X509_EXTENSION_free);
  check(extension && X509_add_ext(certificate, extension.get(), -1) == 1);
}

}  // namespace

Certificates::Certificates()
    : m_key(EVP_EC_gen("P-256"), &EVP_PKEY_free),
      m_certificate(make("test authority", m_key.get(), 1)) {
  X509_set_issuer_name(m_certificate.get(), X509_get_subject_name(m_certificate.get()));
  extend(m_certificate.get(), m_certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
  check(X509_sign(m_certificate.get(), m_key.get(), EVP_sha256()) > 0);
  write("authority", m_certificate.get(), m_key.get());
}

Certificates::Certificate Certificates::make(const std::string& commonName, EVP_PKEY* key,
                                             long daysFromNow) {
  static long serial = 0;
  Certificate certificate(X509_new(), &X509_free);
  check(key != nullptr && certificate != nullptr);
  X509_set_version(certificate.get(), 2);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), ++serial);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -10 * kDay);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), daysFromNow * kDay);
  X509_set_pubkey(certificate.get(), key);
  check(X509_NAME_add_entry_by_NID(X509_get_subject_name(certificate.get()), NID_commonName,
                                   MBSTRING_UTF8,
                                   reinterpret_cast<const unsigned char*>(commonName.data()),
                                   static_cast<int>(commonName.size()), -1, 0) == 1);
  return certificate;
}

void Certificates::sign(const std::string& file, const std::string& commonName,
                        const std::string& use, long daysFromNow) const {
  const Key key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
  const Certificate made = make(commonName, key.get(), daysFromNow);
  X509_set_issuer_name(made.get(), X509_get_subject_name(m_certificate.get()));
  extend(made.get(), m_certificate.get(), NID_ext_key_usage, use);
  extend(made.get(), m_certificate.get(), NID_subject_alt_name, "IP:127.0.0.1,DNS:localhost");
  check(X509_sign(made.get(), m_key.get(), EVP_sha256()) > 0);
  write(file, made.get(), key.get());
}

void Certificates::write(const std::string& name, X509* certificate, EVP_PKEY* key) const {
  using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;
  const File certificateFile(std::fopen(file(name + ".crt").c_str(), "w"), &std::fclose);
  const File keyFile(std::fopen(file(name + ".key").c_str(), "w"), &std::fclose);
  check(certificateFile && PEM_write_X509(certificateFile.get(), certificate) == 1);
  check(keyFile &&
        PEM_write_PrivateKey(keyFile.get(), key, nullptr, nullptr, 0, nullptr, nullptr) == 1);
}

}  // namespace EventSystemTest
