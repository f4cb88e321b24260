#!/bin/bash
# files.sh native|windows BIN: the database files as other tools see them, and what comes of files that are not the
# host's own. What the host would mend by itself before it starts is left as it is (--no-recover).
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

# Columns of both device tables, from devType to the end, and those of one of them.
head_columns='devType INTEGER NOT NULL, summary TEXT NOT NULL, devName TEXT NOT NULL, '
middle_columns='userName TEXT NOT NULL, nickName TEXT NOT NULL, macAddr TEXT NOT NULL, macAddrInt INTEGER NOT NULL, isPaired INTEGER NOT NULL, shareType INTEGER NOT NULL, isReverseChannel INTEGER NOT NULL, isWifi5GAbility INTEGER NOT NULL, isAuthor INTEGER NOT NULL, modelName TEXT NOT NULL, peerUuid TEXT NOT NULL, accountInfo INTEGER NOT NULL, isTrusted INTEGER NOT NULL, connectType INTEGER NOT NULL, deviceType INTEGER NOT NULL, trustType INTEGER NOT NULL, peerDeviceVersion TEXT NOT NULL, '
current_columns='isConnected INTEGER NOT NULL, apkVersionNotMatch INTEGER NOT NULL, pairedIsAuthorized INTEGER NOT NULL, isFileSystemSupported INTEGER NOT NULL, isPhoneMirrorSupported INTEGER NOT NULL, multiDeviceSyncSwitch INTEGER NOT NULL, pairedDeviceIsReconnect INTEGER NOT NULL, pairedDeviceReconnectPermit TEXT NOT NULL'
key_columns='(id INTEGER PRIMARY KEY AUTOINCREMENT, '
trusted_schema="CREATE TABLE trustedZentapDeviceInfo${key_columns}sumId TEXT NOT NULL, ${head_columns}deviceId TEXT NOT NULL, ${middle_columns}isSupportPlenix INTEGER NOT NULL)"
current_schema="CREATE TABLE currZentapDeviceInfo${key_columns}sumId TEXT NOT NULL, $head_columns$middle_columns$current_columns)"
peers_schema="CREATE TABLE PEER_DEVICE${key_columns}udId TEXT NOT NULL, sumId TEXT NOT NULL)"

change_failed='marnockctl: the service answered -4999: a change to a device table failed; its log says why'
read_failed='marnockctl: the service answered -4996: a read failed, or a change to the peers; its log says why'

# request STATUS ANSWER ARGUMENT...
request() {
  local status=0 answer
  answer=$(ctl "${@:3}" 2>&1) || status=$?
  expect "exit status of marnockctl ${*:3}" "$1" "$status"
  expect "answer to marnockctl ${*:3}" "$2" "$answer"
}

expect_logged() { # expect_logged COUNT LINE
  expect "times in the log: $2" "$1" "$(log_lines | grep -cxF "$2" || true)"
}

fresh_start() { # fresh_start: with what lies in the database folder and an empty log
  : > "$log"
  start_host --no-recover
}

# Every request on tables that are not there.
expect_all_to_fail() {
  request 1 "$change_failed" trusted set t --field devName=T
  request 1 "$read_failed" trusted get t
  request 1 "$read_failed" trusted list
  request 1 "$change_failed" trusted delete t
  request 1 "$change_failed" current set c --field devName=C
  request 1 "$read_failed" current get c
  request 1 "$read_failed" current list
  request 1 "$change_failed" current delete c
  request 1 "$read_failed" peer set u s
  request 1 "$read_failed" peer get u
  request 1 "$read_failed" peer delete u
  expect_logged 1 '4 [KTData] Add zentap device failed:no such table: trustedZentapDeviceInfo(KT::TrustedZentapDbEngine::AddZentapDeviceInfo)'
  expect_logged 1 '4 [KTData] Set zentap device info failed.(KT::DevicePersistence::SetTrustedZentapDeviceInfo)'
  expect_logged 1 '4 [KTData] Add zentap device failed:no such table: currZentapDeviceInfo(KT::CurrZentapDbEngine::AddZentapDeviceInfo)'
  expect_logged 1 '4 [KTData] Get zentap device list failed:no such table: currZentapDeviceInfo(KT::CurrZentapDbEngine::GetZentapDeviceInfoList)'
  expect_logged 1 '4 [KTData] Get curr zentap device list info failed.(KT::DevicePersistence::GetCurrZentapDeviceInfoList)'
  expect_logged 1 '4 [KTData] Add peer device failed:no such table: PEER_DEVICE(KT::PeerDeviceDbEngine::AddPeerDevice)'
  expect_logged 1 '4 [KTData] Set peer device info failed.(KT::DevicePersistence::SetPeerDevice)'
}

checking "no files: nothing is written until a change or the end"
fresh_start
expect "files before the first change" "" "$(ls "$store")"
request 0 done peer set u1 s1
expect "files after a change to the peers" "$peers" "$(ls "$store")"

checking "schema, types and values as the sqlite3 tool reads them"
request 0 done trusted set t1 --field devName=Tablet --field trustType=4294967295 --field isPaired=true
request 0 done current set c1 --field macAddrInt=-9223372036854775808 --field pairedDeviceReconnectPermit=yes
expect "schema of the peers" "$peers_schema" "$(rows "$peers" "SELECT sql FROM sqlite_master WHERE name = 'PEER_DEVICE'")"
expect "schema of the trusted devices" "$trusted_schema" \
  "$(rows "$trusted" "SELECT sql FROM sqlite_master WHERE name = 'trustedZentapDeviceInfo'")"
expect "schema of the current devices" "$current_schema" \
  "$(rows "$current" "SELECT sql FROM sqlite_master WHERE name = 'currZentapDeviceInfo'")"
expect "a trusted device" 'text|integer|4294967295|integer|1|t1|Tablet' \
  "$(rows "$trusted" "SELECT typeof(devName), typeof(trustType), trustType, typeof(isPaired), isPaired, sumId, devName FROM trustedZentapDeviceInfo")"
expect "a current device" 'integer|-9223372036854775808|text|yes|1|2|-1' \
  "$(rows "$current" "SELECT typeof(macAddrInt), macAddrInt, typeof(pairedDeviceReconnectPermit), pairedDeviceReconnectPermit, shareType, connectType, deviceType FROM currZentapDeviceInfo")"
expect "a peer" '1|u1|s1' "$(rows "$peers" "SELECT * FROM PEER_DEVICE")"
stop_host
for file in "$peers" "$trusted" "$current"; do
  expect "integrity_check of $file" ok "$(rows "$file" 'PRAGMA integrity_check')"
done

checking "files made by the sqlite3 tool, with small pages, are served"
rm "$store"/*
values="'', 'Made elsewhere', 'd', '', '', '', 7, 0, 1, 1, 1, 0, '', '', 0, 5, 2, -1, 1, '', 1"
sqlite3 "$store/$trusted" "PRAGMA page_size = 1024; $trusted_schema; INSERT INTO trustedZentapDeviceInfo VALUES (9, 'k', 3, $values)"
sqlite3 "$store/$current" "PRAGMA page_size = 1024; $current_schema;"
sqlite3 "$store/$peers" "PRAGMA page_size = 1024; $peers_schema; INSERT INTO PEER_DEVICE (udId, sumId) VALUES ('u', 'a'), ('u', 'b')"
fresh_start
expect_logged 3 '3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)'
request 0 "$(printf 'devType  deviceId  devName         macAddrInt  isTrusted  trustType  isSupportPlenix\n3        d         Made elsewhere  7           true       1          true\n1 trusted device')" trusted list
request 0 b peer get u
request 0 done peer delete u
request 4 'marnockctl: no peer has the udId "u"' peer get u
request 0 done trusted set k2 --field devName=New
stop_host
expect "ids go on" '9|k
10|k2' "$(rows "$trusted" 'SELECT id, sumId FROM trustedZentapDeviceInfo')"

checking "files without the table: everything fails"
for file in "$peers" "$trusted" "$current"; do
  rm "$store/$file"
  sqlite3 "$store/$file" 'CREATE TABLE other(x)'
done
fresh_start
expect_logged 3 '3 [KTData] Init database success.(KT::DbEngine::InitDb)'
expect_all_to_fail
stop_host

checking "empty files: everything fails"
for file in "$peers" "$trusted" "$current"; do : > "$store/$file"; done
fresh_start
expect_logged 3 '3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)'
expect_all_to_fail
stop_host

checking "files that are no databases: everything fails"
for file in "$peers" "$trusted" "$current"; do printf 'This is no database, %05000d.' 0 > "$store/$file"; done
fresh_start
expect_logged 3 '4 [KTData] Load local database failed:file is not a database(KT::DbEngine::LoadDbFromDisk)'
expect_logged 3 '4 [KTData] Load database failed.(KT::DbEngine::InitDb)'
expect_logged 1 '4 [KTData] Init peer device database failed.(KT::PeerDeviceDbEngine::Init)'
expect_logged 1 '4 [KTData] Init database failed.(KT::CurrZentapDbEngine::Init)'
expect_logged 1 '4 [KTData] Init database failed.(KT::TrustedZentapDbEngine::Init)'
expect_all_to_fail
stop_host

checking "folders in the files' places: served from memory, not saved"
rm "$store"/*
for file in "$peers" "$trusted" "$current"; do mkdir "$store/$file"; done
fresh_start
expect_logged 3 '3 [KTData] Creat database success.(KT::DbEngine::CreateTable)'
request 0 done peer set u s
request 0 s peer get u
expect_logged 1 '4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)'
stop_host
expect_logged 4 '4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)'
expect "files" "$(printf '%s\n' "$current" "$peers" "$trusted")" "$(ls "$store")"
finish
