# Signatures, for ./dev package --sign. Sourced after package.sh.
#
# Authenticode with SHA-256. The certificate and its key are a PKCS #12 file; its password comes from V5_SIGN_PASSWORD or
# is asked for, and goes to the signing tool in a file that only this user can read: command lines are seen by everybody.

SIGN_CERTIFICATE=''
SIGN_TIMESTAMP=''

# sign_with CERTIFICATE [TIMESTAMP URL]: from now on `sign` signs; with a time stamp of that service, signatures outlive the
# certificate.
sign_with() {
  SIGN_CERTIFICATE=$1 SIGN_TIMESTAMP=${2:-}
  [ -r "$SIGN_CERTIFICATE" ] || fail "package --sign: $SIGN_CERTIFICATE cannot be read"
  need_packages osslsigncode openssl
  if [ -z "${V5_SIGN_PASSWORD+set}" ]; then
    [ -t 0 ] || fail "package --sign: the certificate's password stands neither in V5_SIGN_PASSWORD nor can it be asked for"
    read -rsp "Password of $SIGN_CERTIFICATE: " V5_SIGN_PASSWORD
    echo
  fi
  with_password openssl pkcs12 -in "$SIGN_CERTIFICATE" -nokeys -passin file:{password} >/dev/null 2>&1 ||
    fail "package --sign: $SIGN_CERTIFICATE is no certificate with this password"
}

# with_password COMMAND…: runs it with the name of a file with the password in the place of {password}
with_password() {
  local file status=0
  file=$(umask 077 && mktemp)
  printf %s "$V5_SIGN_PASSWORD" >"$file"
  (unset V5_SIGN_PASSWORD && "${@/\{password\}/$file}") || status=$?
  rm -f "$file"
  return $status
}

# sign FILE…: signs each of them, when there is a certificate
sign() {
  local file log="$BUILD/package/sign.log"
  [ -n "$SIGN_CERTIFICATE" ] || return 0
  for file in "$@"; do
    with_password osslsigncode sign -pkcs12 "$SIGN_CERTIFICATE" -readpass {password} -h sha256 \
      -n "V5Strings $(package_version)" ${SIGN_TIMESTAMP:+-ts "$SIGN_TIMESTAMP"} -in "$file" -out "$file.signed" >"$log" 2>&1 ||
      { rm -f "$file.signed"; fail "cannot sign ${file##*/}: $(reason "$log")"; }
    mv "$file.signed" "$file"
  done
}
