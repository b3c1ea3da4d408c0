/* The floor for remote_http.sh: the least a server can do per connection on
 * this machine. One thread, blocking accept, one recv, one send of a reply
 * built once, close. No event loop, no timers, no limits: nothing a real
 * server could ship, only what the kernel and wrk cost by themselves.
 * Usage: floor_server PORT_FILE BODY_FILE
 */
#define _GNU_SOURCE
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

static char *read_file(const char *path, size_t *size) {
    FILE *f = fopen(path, "rb");
    if (!f) return NULL;
    char *data = malloc(1 << 20);
    *size = fread(data, 1, (1 << 20) - 1, f);
    fclose(f);
    return data;
}

int main(int argc, char **argv) {
    if (argc != 3) {
        fprintf(stderr, "usage: floor_server PORT_FILE BODY_FILE\n");
        return 2;
    }
    size_t body_size = 0;
    char *body = read_file(argv[2], &body_size);
    if (!body) {
        perror("floor_server: body");
        return 1;
    }
    char *reply = malloc(body_size + 512);
    int header = snprintf(reply, 512,
                          "HTTP/1.1 200 OK\r\n"
                          "Content-Type: application/json; charset=utf-8\r\n"
                          "Content-Length: %zu\r\n"
                          "Access-Control-Allow-Origin: *\r\n"
                          "Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n"
                          "Access-Control-Allow-Headers: Content-Type\r\n"
                          "Connection: close\r\n\r\n",
                          body_size);
    memcpy(reply + header, body, body_size);
    size_t reply_size = (size_t)header + body_size;

    int listener = socket(AF_INET, SOCK_STREAM, 0);
    int one = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    struct sockaddr_in addr = {.sin_family = AF_INET, .sin_addr.s_addr = htonl(INADDR_LOOPBACK)};
    socklen_t len = sizeof addr;
    if (bind(listener, (struct sockaddr *)&addr, sizeof addr) != 0 || listen(listener, 511) != 0 ||
        getsockname(listener, (struct sockaddr *)&addr, &len) != 0) {
        perror("floor_server: listen");
        return 1;
    }
    FILE *port_file = fopen(argv[1], "w");
    if (!port_file) {
        perror("floor_server: port file");
        return 1;
    }
    fprintf(port_file, "%d\n", ntohs(addr.sin_port));
    fclose(port_file);

    char request[8192];
    for (;;) {
        int fd = accept4(listener, NULL, NULL, SOCK_CLOEXEC);
        if (fd < 0) continue;
        setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        if (recv(fd, request, sizeof request, 0) > 0) send(fd, reply, reply_size, MSG_NOSIGNAL);
        close(fd);
    }
}
