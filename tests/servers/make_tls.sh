#!/usr/bin/env bash
# make_tls.sh DIR: a throw-away certificate authority (DIR/ca.der, the one the
# HTTPS tests trust inside their Wine prefix) and four server certificates
# (key and certificate together, as lighttpd reads them): good.pem for
# "localhost" from that authority, expired.pem (expired) and wrong_host.pem
# (for another name) from it too, and untrusted.pem from an authority nobody
# trusts. Nothing here is kept or reused.
set -euo pipefail
dir=$1
mkdir -p "$dir" && cd "$dir"
ca() {  # name
    openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 \
        -subj "/CN=Heralder test authority $1" -keyout "$1.key" -out "$1.crt" 2>/dev/null
}
server() {  # name authority host
    local name=$1 authority=$2 host=$3
    openssl req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj "/CN=$host" \
        -keyout "$name.key" -out "$name.csr" 2>/dev/null
    printf 'subjectAltName=DNS:%s\nbasicConstraints=CA:FALSE\nextendedKeyUsage=serverAuth\n' "$host" >"$name.ext"
    if [ "$name" = expired ]; then
        # Valid for one day of 2020. OpenSSL 3.0's x509 cannot set a start date;
        # "openssl ca" sets both.
        mkdir -p ca_db && : >ca_db/index.txt && echo 01 >ca_db/serial
        printf '%s\n' "[ca]" "default_ca = test" "[test]" "database = ca_db/index.txt" \
            "serial = ca_db/serial" "new_certs_dir = ca_db" "default_md = sha256" "policy = any" \
            "copy_extensions = none" "[any]" "commonName = supplied" >ca_db/ca.cnf
        openssl ca -batch -config ca_db/ca.cnf -cert "$authority.crt" -keyfile "$authority.key" \
            -in "$name.csr" -out "$name.crt" -extfile "$name.ext" -notext \
            -startdate 20200101000000Z -enddate 20200102000000Z 2>/dev/null
    else
        openssl x509 -req -in "$name.csr" -CA "$authority.crt" -CAkey "$authority.key" \
            -CAcreateserial -extfile "$name.ext" -days 2 -out "$name.crt" 2>/dev/null
    fi
    cat "$name.key" "$name.crt" >"$name.pem"
}
ca trusted
ca stranger
server good trusted localhost
server expired trusted localhost
server wrong_host trusted wrong-host.example
server untrusted stranger localhost
openssl x509 -in trusted.crt -outform DER -out ca.der
