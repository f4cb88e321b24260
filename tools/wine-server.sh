# Sourced by scripts that run one Windows program after the other in the prefix WINEPREFIX. A server that a program brings
# up ends with the last program, and the next one that starts may meet it while it ends, and fail.
keep_wine_server() { /usr/lib/wine/wineserver64 -p600 || true; } # there may be one already

end_wine_server() {
  /usr/lib/wine/wineserver64 -k || true
  /usr/lib/wine/wineserver64 -w || true
}
