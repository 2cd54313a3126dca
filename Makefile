# make deps | make run [RUN_ARGS="..."] | make test | make bench | make fuzz
# Every target installs the Debian packages it needs first (as root, or through sudo).

PACKAGES := cmake ninja-build pkg-config g++ g++-multilib clang libclang-rt-14-dev \
            rapidjson-dev libyaml-dev libgtest-dev libgmock-dev libbenchmark-dev \
            libcpp-httplib-dev libcli11-dev nlohmann-json3-dev libmsgpack-dev libyaml-cpp-dev
SUDO := $(shell [ "$$(id -u)" -eq 0 ] || echo sudo)
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 180
RUN_ARGS ?=

.PHONY: deps configure build test run bench fuzz clean

deps:
	@missing=""; \
	for p in $(PACKAGES); do \
	    dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q '^install ok installed$$' || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	    echo "Installing:$$missing"; \
	    $(SUDO) apt-get update && \
	    DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y --no-install-recommends $$missing; \
	fi

configure: deps
	cmake --preset dev

build: configure
	cmake --build --preset dev -j $(JOBS)

test: build
	ctest --preset dev -j $(JOBS)

run: build
	./build/devhost/tav-host $(RUN_ARGS)

bench: deps
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS)
	@for b in build-bench/bench/bench_*; do [ -x "$$b" ] && "$$b" || true; done

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

clean:
	rm -rf build build-asan build-bench build-fuzz
