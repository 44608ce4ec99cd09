#pragma once
#include "server/ServerOptions.h"

namespace server {

// `--import`: reads the catalog CSV (columns PackageId, Version, Name, LastUpdate; see
// demo/CatalogCsv.h), makes its products and replaces the database's catalog
// with them; prints "imported N products". 1, with one line on standard error, when the file
// cannot be read, is malformed or holds no product, or the database fails; the old catalog
// then stays.
int runImport(const ServerOptions& options);

// Opens the database, builds the in-memory index from its catalog, listens, and prints
// "listening on http://<address>:<port>" (flushed); serves until SIGTERM or SIGINT, then
// returns 0. 1, with one line on standard error, when the database cannot be opened or the
// address not listened on. A catalog that cannot be read does not stop the server: its
// lookups then answer 4000.
int runServer(const ServerOptions& options);

}  // namespace server
