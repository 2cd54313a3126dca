# make deps | make run [RUN_ARGS="..."] | make test | make bench | make fuzz
# make asan | make windows | make test32 | make test-windows   (the other targets; README, "Targets")
# Every target installs the Debian packages it needs first (as root, or through sudo).

PACKAGES := cmake ninja-build pkg-config g++ g++-multilib clang libclang-rt-14-dev \
            rapidjson-dev libyaml-dev libgtest-dev libgmock-dev libbenchmark-dev \
            libcpp-httplib-dev libcli11-dev nlohmann-json3-dev libmsgpack-dev libyaml-cpp-dev \
            chromium chromium-driver python3-selenium
# The API explorer's library and the OpenAPI validator, pinned by devhost/npm/package-lock.json and
# installed into the build's own folder; npm comes with the machine's Node.js, or with Debian's.
NPM_DIR := build-deps/npm
NPM_STAMP := $(NPM_DIR)/node_modules/.package-lock.json
# The other targets build libyaml and GoogleTest from their sources (dpkg-dev unpacks libyaml's).
TARGET_PACKAGES := cmake ninja-build g++-multilib rapidjson-dev libgtest-dev libgmock-dev dpkg-dev \
                   g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix wine64
LIBYAML_SOURCE := build-deps/libyaml
SUDO := $(shell [ "$$(id -u)" -eq 0 ] || echo sudo)
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 180
RUN_ARGS ?=

.PHONY: deps deps-targets configure build test asan run bench fuzz windows test32 test-windows clean

# $(call install-missing,PACKAGES)
define install-missing
	@missing=""; \
	for p in $(1); do \
	    dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q '^install ok installed$$' || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	    echo "Installing:$$missing"; \
	    $(SUDO) apt-get update && \
	    DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y --no-install-recommends $$missing; \
	fi
endef

deps: $(NPM_STAMP)
	$(call install-missing,$(PACKAGES))

$(NPM_STAMP): devhost/npm/package.json devhost/npm/package-lock.json
	@command -v npm >/dev/null 2>&1 || { $(SUDO) apt-get update && \
	    DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y --no-install-recommends nodejs npm; }
	mkdir -p $(NPM_DIR)
	cp devhost/npm/package.json devhost/npm/package-lock.json $(NPM_DIR)/
	cd $(NPM_DIR) && npm ci --ignore-scripts --no-audit --no-fund

# Besides the packages, source entries for `apt-get source`: the machine's own
# package entries copied with the source type, when it has none yet.
deps-targets:
	$(call install-missing,$(TARGET_PACKAGES))
	@apt-cache showsrc libyaml >/dev/null 2>&1 || { \
	    echo "Adding source entries beside the machine's package entries"; \
	    out=/etc/apt/sources.list.d/tav-deb-src; \
	    for f in /etc/apt/sources.list.d/*.sources; do \
	        [ -e "$$f" ] && [ "$$f" != "$$out.sources" ] || continue; \
	        sed 's/^Types:.*/Types: deb-src/' "$$f"; echo; \
	    done | $(SUDO) tee $$out.sources >/dev/null; \
	    for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do \
	        [ -e "$$f" ] && [ "$$f" != "$$out.list" ] || continue; \
	        sed -n 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$$f"; \
	    done | $(SUDO) tee $$out.list >/dev/null; \
	    $(SUDO) apt-get update; \
	}

# libyaml's Debian sources, fetched at build time and never committed; shared by the other targets.
$(LIBYAML_SOURCE)/CMakeLists.txt: | deps-targets
	rm -rf build-deps/fetch && mkdir -p build-deps/fetch
	cd build-deps/fetch && apt-get source libyaml
	rm -rf $(LIBYAML_SOURCE) && mv build-deps/fetch/libyaml-*/ $(LIBYAML_SOURCE) && rm -rf build-deps/fetch

configure: deps
	cmake --preset dev

build: configure
	cmake --build --preset dev -j $(JOBS)

test: build
	ctest --preset dev -j $(JOBS)

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer (build-asan/).
asan: deps
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan -j $(JOBS)

run: build
	./build/devhost/tav-host $(RUN_ARGS)

# The benchmarks side by side with their peers, then tav-host under load (wrk, bench/load/run.sh).
bench: deps
	$(call install-missing,wrk)
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS)
	@for b in build-bench/bench/bench_*; do [ -x "$$b" ] && "$$b" || true; done
	bench/load/run.sh build-bench/devhost/tav-host

fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS) --target fuzz_targets
	@set -e; for f in build-fuzz/fuzz/fuzz_*; do \
	    [ -x "$$f" ] || continue; name=$$(basename $$f); \
	    mkdir -p build-fuzz/corpus/$$name; \
	    seeds=""; [ -d fuzz/seeds/$$name ] && seeds=fuzz/seeds/$$name; \
	    echo "== $$name ($(FUZZ_SECONDS) s)"; \
	    "$$f" -max_total_time=$(FUZZ_SECONDS) -print_final_stats=1 build-fuzz/corpus/$$name $$seeds; \
	done

# The plug-in for the platform: wex-be-tav-leagues.dll, PE32 for i386; its export and import tables checked.
windows: deps-targets $(LIBYAML_SOURCE)/CMakeLists.txt
	cmake --preset windows
	cmake --build --preset windows -j $(JOBS)
	ctest --preset windows

# The framework, the plug-in and the unit and end-to-end tests built with -m32 and run.
test32: deps-targets $(LIBYAML_SOURCE)/CMakeLists.txt
	cmake --preset test32
	cmake --build --preset test32 -j $(JOBS)
	ctest --preset test32 -j $(JOBS)

# The unit and end-to-end tests for 64-bit Windows, run under wine64.
test-windows: deps-targets $(LIBYAML_SOURCE)/CMakeLists.txt
	cmake --preset test-windows
	cmake --build --preset test-windows -j $(JOBS)
	ctest --preset test-windows -j $(JOBS)

clean:
	rm -rf build build-asan build-bench build-fuzz build-windows build-test32 build-test-windows build-deps
