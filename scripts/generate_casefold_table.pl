#!/usr/bin/perl
# Writes src/foundation/casefoldtable.h: the simple case mappings and the white space of the Basic Multilingual Plane,
# from the Unicode data that this perl carries.
#
#   perl scripts/generate_casefold_table.pl > src/foundation/casefoldtable.h
use strict;
use warnings;
use Unicode::UCD qw(prop_invmap);

# Calls $visit->(code point, mapped code point) for every mapping that stays within the plane, beyond ASCII.
sub each_mapping {
    my ($property, $visit) = @_;
    my ($starts, $maps, $format, $default) = prop_invmap($property);
    for my $i (0 .. $#$starts) {
        next if $maps->[$i] == 0;
        my $end = $i < $#$starts ? $starts->[ $i + 1 ] : 0x110000;
        for my $code ($starts->[$i] .. $end - 1) {
            my $mapped = $maps->[$i] + $code - $starts->[$i];
            $visit->($code, $mapped) if $code >= 0x80 && $code <= 0xFFFF && $mapped <= 0xFFFF && $mapped != $code;
        }
    }
}

# Joins mappings of one distance, one or two code points apart, into ranges.
sub ranges_of {
    my ($property) = @_;
    my @ranges;
    each_mapping($property, sub {
        my ($code, $mapped) = @_;
        my $delta = ($mapped - $code) & 0xFFFF;
        my $last = $ranges[-1];
        if ($last && $last->{delta} == $delta) {
            my $step = $code - $last->{last};
            if ($step <= 2 && ($last->{first} == $last->{last} || $last->{step} == $step)) {
                @$last{qw(last step)} = ($code, $step);
                return;
            }
        }
        push @ranges, { first => $code, last => $code, step => 1, delta => $delta };
    });
    return @ranges;
}

sub print_rows {
    while (my @row = splice @_, 0, 4) { print "    ", join(", ", @row), ",\n" }
    print "};\n\n";
}

sub print_cases {
    my ($name, $property) = @_;
    print "inline constexpr CaseRange $name\[] = {\n";
    print_rows(map { sprintf "{0x%04X, 0x%04X, 0x%04X, %d}", @$_{qw(first last delta step)} } ranges_of($property));
}

sub print_spaces {
    my ($starts, $maps) = prop_invmap("White_Space");
    print "inline constexpr CharacterRange kWhiteSpace[] = {\n";
    print_rows(map { sprintf "{0x%04X, 0x%04X}", $starts->[$_], $starts->[ $_ + 1 ] - 1 }
        grep { $maps->[$_] eq "Y" } 0 .. $#$starts);
}

my $version = Unicode::UCD::UnicodeVersion();
print <<"HEAD";
// Case mappings and white space of Unicode $version, as ranges; made by scripts/generate_casefold_table.pl.
#pragma once

#include <cstdint>

namespace connectdialog {

/// Every `step`-th character of first..last maps to itself plus `delta`, modulo 65536. ASCII is left out.
struct CaseRange {
    char16_t first;
    char16_t last;
    std::uint16_t delta;
    std::uint16_t step;
};

struct CharacterRange {
    char16_t first;
    char16_t last;
};

// clang-format off
HEAD
print_cases("kLowerRanges", "Simple_Lowercase_Mapping");
print_cases("kUpperRanges", "Simple_Uppercase_Mapping");
print_spaces();
print "// clang-format on\n\n}  // namespace connectdialog\n";
