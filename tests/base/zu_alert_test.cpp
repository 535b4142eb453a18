#include "zu_test_support.h"

// Listeners that note their numbers.
static std::vector<int> fired;

static void note( ZU_OBJ *arg )
{
    fired.push_back( (int)zuBoxedIntValue( zuBoxedIntFrom( arg ) ) );
}
static zu::Ref<ZU_ALERTABLE> createNoting( int number )
{
    zu::Ref<ZU_BOXED_INT> arg = zu::adopt( zuBoxedIntCreate( number ) );
    return zu::adopt( zuAlertableCreate( note, zuBoxedIntObj( arg.get() ) ) );
}

TEST( Alert, BehavesLikeAModel )
{
    static constexpr int LISTENERS = 6;
    for ( unsigned seed = 1; seed <= 200; seed++ ) {
        SeededRandom random( seed );
        zu::Ref<ZU_ALERT> al = zu::adopt( zuAlertCreate() );
        std::vector<zu::Ref<ZU_ALERTABLE>> listeners;
        std::vector<zu::Ref<ZU___ALERTABLE_IMP>> imps;
        for ( int i = 0; i < LISTENERS; i++ ) {
            listeners.push_back( createNoting( i ) );
            imps.push_back( zu::adopt( zu___AlertableImp( listeners.back().get() ) ) );
        }
        // The dict is in the order of the insides, whatever that is; it is settled once two have been compared.
        auto before = [ & ]( int a, int b ) {
            return zu___AlertableImpCompare( imps[ a ].get(), imps[ b ].get() ) < 0;
        };
        bool set = false;
        int slot = -1; // none
        std::set<int, decltype( before )> dict( before );
        for ( int step = 0; step < 200; step++ ) {
            int i = (int)( random() % LISTENERS );
            std::vector<int> expected;
            switch ( random() % 8 ) {
            case 0:
                if ( !set ) {
                    if ( slot >= 0 ) {
                        expected.push_back( slot );
                    }
                    expected.insert( expected.end(), dict.begin(), dict.end() );
                    slot = -1;
                    dict.clear();
                }
                set = true;
                zuAlertSet( al.get() );
                break;
            case 1:
                ASSERT_EQ( zuAlertUnset( al.get() ), set );
                set = false;
                break;
            case 2:
            case 3:
                slot = slot == i ? -1 : slot;
                dict.erase( i );
                zuAlertDelAlertable( al.get(), listeners[ i ].get() );
                break;
            default:
                if ( set ) {
                    expected.push_back( i );
                } else if ( slot < 0 ) {
                    slot = i;
                } else if ( slot != i ) {
                    dict.insert( i );
                }
                zuAlertAddAlertable( al.get(), listeners[ i ].get() );
            }
            ASSERT_EQ( std::exchange( fired, {} ), expected ) << "step " << step;
            ASSERT_EQ( zuAlertIsSet( al.get() ), set );
        }
        al = nullptr;
        EXPECT_TRUE( fired.empty() ); // its end is no setting
    }
}
