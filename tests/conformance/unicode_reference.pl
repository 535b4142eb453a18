# Prints what perl's own Unicode database says.
#
# usage: unicode_reference.pl scripts | white-space
#
# A line for each range of code points: the first, the one behind the last, and the name of the script, or 1 for white
# space and 0 for others.
use strict;
use warnings;
use Unicode::UCD qw( prop_invlist prop_invmap );

my ( $starts, $values );
if ( $ARGV[ 0 ] eq "scripts" ) {
    ( $starts, $values ) = prop_invmap( "Script" );
} else {
    # An inversion list: each element begins a range that is in the set where the one before was not.
    $starts = [ prop_invlist( "White_Space" ) ];
    $values = [ map { 1 - $_ % 2 } 0 .. $#$starts ];
    unshift @$starts, 0;
    unshift @$values, 0;
}
for my $i ( 0 .. $#$starts ) {
    my $end = $i < $#$starts ? $starts->[ $i + 1 ] : 0x110000;
    printf "%X %X %s\n", $starts->[ $i ], $end, $values->[ $i ] if $starts->[ $i ] < 0x110000;
}
