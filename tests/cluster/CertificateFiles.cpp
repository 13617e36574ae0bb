#include "tests/cluster/CertificateFiles.h"

#include <fstream>

#include "apps/etcd_nodes/Subprocess.h"

namespace EventSystemTest {

CertificateFiles::CertificateFiles(const std::string& serverNames) {
  run({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
       "-nodes", "-days", "2", "-subj", "/CN=test authority", "-keyout", file("ca.key"), "-out",
       file("ca.crt")});
  sign("server", "subjectAltName=" + serverNames + "\nextendedKeyUsage=serverAuth,clientAuth\n");
  sign("client", "extendedKeyUsage=clientAuth\n");
}

void CertificateFiles::run(const std::vector<std::string>& command) const {
  EtcdNodes::runProgram(command, file("openssl.log"));
}

void CertificateFiles::sign(const std::string& name, const std::string& extensions) const {
  std::ofstream(file(name + ".ext")) << extensions;
  run({"openssl", "req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
       "-subj", "/CN=" + name, "-keyout", file(name + ".key"), "-out", file(name + ".csr")});
  run({"openssl", "x509", "-req", "-days", "2", "-in", file(name + ".csr"), "-CA", file("ca.crt"),
       "-CAkey", file("ca.key"), "-CAcreateserial", "-extfile", file(name + ".ext"), "-out",
       file(name + ".crt")});
}

std::vector<std::string> CertificateFiles::serverArguments() const {
  return {"--cert-file=" + file("server.crt").string(), "--key-file=" + file("server.key").string(),
          "--trusted-ca-file=" + file("ca.crt").string(), "--client-cert-auth=true"};
}

void CertificateFiles::configure(EventSystemHost::ClusterConfiguration& configuration) const {
  configuration.trustedCertificatesFile = file("ca.crt");
  configuration.certificateFile = file("client.crt");
  configuration.keyFile = file("client.key");
}

}  // namespace EventSystemTest
