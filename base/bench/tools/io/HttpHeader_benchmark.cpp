// HttpHeader_benchmark.cpp: reading a typical 500-byte browser request head into an
// HttpHeader, beside cutting it with QByteArray::split and beside libhttp-parser's
// callbacks (where the system has it), which only report where each piece lies.
#include "orv/HttpHeader.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <benchmark/benchmark.h>

#ifdef ORV_HAVE_HTTP_PARSER
#include <http_parser.h>
#endif

namespace {

QByteArray const &browserHead() {
    static QByteArray const head =
        "GET /images/gallery/2024/summer/photo-0042.jpg?size=large&v=3 HTTP/1.1\r\n"
        "Host: www.example.org:8080\r\n"
        "User-Agent: Mozilla/5.0 (X11; Linux x86_64; rv:109.0) Gecko/20100101 Firefox/115.0\r\n"
        "Accept: image/avif,image/webp,*/*\r\n"
        "Accept-Language: en-US,en;q=0.5\r\n"
        "Accept-Encoding: gzip, deflate, br\r\n"
        "Referer: http://www.example.org:8080/gallery/2024/summer/index.html\r\n"
        "Connection: keep-alive\r\n"
        "Cookie: session=6f1c2a9e8b7d4c3f; theme=dark; lang=en\r\n"
        "Sec-Fetch-Dest: image\r\n"
        "Sec-Fetch-Mode: no-cors\r\n"
        "Sec-Fetch-Site: same-origin\r\n"
        "Cache-Control: max-age=0\r\n"
        "\r\n";
    return head;
}

void BM_HttpHeader_FromString(benchmark::State &state) {
    QString const text = QString::fromLatin1(browserHead());
    for (auto _ : state) {
        orv::HttpHeader head(true);
        benchmark::DoNotOptimize(head.fromString(text));
        benchmark::DoNotOptimize(head.getResource());
    }
    state.SetBytesProcessed(state.iterations() * browserHead().size());
}
BENCHMARK(BM_HttpHeader_FromString);

// Lines, then key and value of each: the pieces a parser hands out, without checks.
void BM_QByteArray_Split(benchmark::State &state) {
    for (auto _ : state) {
        QList<QByteArray> const lines = browserHead().split('\n');
        QList<QPair<QByteArray, QByteArray>> fields;
        for (int i = 1; i < lines.size(); ++i) {
            int const colon = lines[i].indexOf(':');
            if (colon > 0)
                fields.append({lines[i].left(colon), lines[i].mid(colon + 1).trimmed()});
        }
        benchmark::DoNotOptimize(fields);
    }
    state.SetBytesProcessed(state.iterations() * browserHead().size());
}
BENCHMARK(BM_QByteArray_Split);

#ifdef ORV_HAVE_HTTP_PARSER
void BM_HttpParser_Callbacks(benchmark::State &state) {
    struct Pieces {
        char const *last = nullptr;
        size_t count = 0;
    } pieces;
    http_parser_settings settings{};
    auto const keep = [](http_parser *parser, char const *at, size_t length) {
        auto *p = static_cast<Pieces *>(parser->data);
        p->last = at;
        p->count += length;
        return 0;
    };
    settings.on_url = keep;
    settings.on_header_field = keep;
    settings.on_header_value = keep;
    QByteArray const &head = browserHead();
    for (auto _ : state) {
        http_parser parser;
        http_parser_init(&parser, HTTP_REQUEST);
        parser.data = &pieces;
        benchmark::DoNotOptimize(
            http_parser_execute(&parser, &settings, head.constData(), size_t(head.size())));
    }
    benchmark::DoNotOptimize(pieces);
    state.SetBytesProcessed(state.iterations() * head.size());
}
BENCHMARK(BM_HttpParser_Callbacks);
#endif

} // namespace

BENCHMARK_MAIN();
