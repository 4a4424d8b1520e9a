# The tool cndfrmt in an image of its own; docs/tool.md has the commands.
#
# The base is named by its tag and not by a digest, so that a new build gets Debian 12's security
# fixes. To build the same image again, name the digest here.
ARG BASE=debian:12-slim

FROM ${BASE} AS build
WORKDIR /sources
COPY scripts/install_packages.sh scripts/packages.txt scripts/packages_package.txt scripts/
RUN scripts/install_packages.sh packages.txt packages_package.txt
COPY . .
ARG SOURCE_DATE_EPOCH=0
RUN cmake --preset package -D CNDFRMT_BUILD_PYTHON=OFF && \
    cmake --build --preset package --target package

FROM ${BASE}
RUN --mount=type=bind,from=build,source=/sources/build/package/packages,target=/packages \
    apt-get update && \
    apt-get install --yes --no-install-recommends \
      /packages/libzorvhost*.deb /packages/libconditionalformatters[0-9]*.deb \
      /packages/cndfrmt_*.deb && \
    rm -rf /var/lib/apt/lists/* && \
    useradd --system --user-group --home-dir /tmp cndfrmt
USER cndfrmt
ENV LANG=C.UTF-8
WORKDIR /data
ENTRYPOINT ["cndfrmt"]
